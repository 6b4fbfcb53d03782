// The line to Logo's server, broken in every way at the login and at a statement, through the
// machine's real driver; and the wait that the user can end.

#include "check/beside.h"
#include "controls/transferwidgets.h"
#include "controls/waitstrip.h"
#include "frame/answerwait.h"
#include "invoices/columns.h"
#include "invoices/duzey/screens/fatduzwindow.h"
#include "invoices/duzeydesk.h"
#include "invoices/screens/fatwindow.h"
#include "logolink/screens/sqlbaglantiwindow.h"
#include "stocktake/screens/sayimwindow.h"
#include "support/cells.h"
#include "support/logodesk.h"
#include "support/ruler.h"
#include "support/table.h"

#include <QAccessible>
#include <QAction>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QWindow>

using namespace kervan;

namespace {

using Milliseconds = std::chrono::milliseconds;

const QMap<QString, TdsFault> &faults()
{
    static const QMap<QString, TdsFault> all{
        {u"hang"_s, TdsFault::Hang},
        {u"late"_s, TdsFault::Late},
        {u"cut before"_s, TdsFault::CutBefore},
        {u"cut amid"_s, TdsFault::CutAmid},
        {u"cut behind"_s, TdsFault::CutBehind},
        {u"refusal"_s, TdsFault::Refusal},
        {u"noise"_s, TdsFault::Noise},
        {u"nonsense"_s, TdsFault::Nonsense},
        {u"long packet"_s, TdsFault::LongPacket},
        {u"long token"_s, TdsFault::LongToken},
        {u"no end"_s, TdsFault::NoEnd},
    };
    return all;
}

// The driver waits on for what the server believes to have sent.
bool comesNever(TdsFault fault)
{
    return fault == TdsFault::Hang || fault == TdsFault::Noise || fault == TdsFault::LongPacket ||
           fault == TdsFault::NoEnd;
}

/// The frame as main() makes it, with three invoices and two counts, all of them known to Logo.
class Desk : public LogoDesk
{
public:
    std::function<void()> whileWaiting; ///< done between two looks for the answer
    int waits = 0;                      ///< that were long enough to be seen

    explicit Desk(Milliseconds silence = Milliseconds(30))
        : m_wait([this] { return window.screenAtWork(); }, silence)
    {
        server.waitBy([this](const auto &hasCome) {
            const bool isThere = m_wait.until([&](Milliseconds time) {
                const bool hasIt = hasCome(time);
                if (!hasIt && strip() && whileWaiting)
                    whileWaiting();
                return hasIt;
            });
            waits += strip() ? 1 : 0;
            return isThere;
        });
        saveSettings();
        writeBytes(t.path(u"kasa.kvz"_s), "K100\r\n");
        QByteArray bif;
        QString sheet = QString(22, u'|') + u"İndirim"_s;
        for (const QString &code : {u"C1"_s, u"C2"_s, u"C3"_s}) {
            logo.run(u"insert into LG_012_CLCARD values (1, '%1', 'Eski', 1)"_s.arg(code));
            bif += ruled(u"@5", 5, u"20240307", 28, code, 80, code, 96, u"1", 109, u"0", 122, u"0",
                         135, u"1", 148, u"0");
            sheet += u'\n' + Record{.no = code, .cari = code}.line();
        }
        for (const QString &row :
             {u"UNITBARCODE values ('869', 1, 2)"_s, u"UNITBARCODE values ('870', 1, 2)"_s,
              u"ITEMS values (1, 'ŞKR', 'x')"_s, u"UNITSETL values (2, 'KOLİ', 'x')"_s})
            logo.run(u"insert into LG_012_"_s + row);
        writeBytes(t.path(u"fat"_s), bif);
        writeBytes(t.path(u"sayimform"_s), ruled(u"869", 15, u"1") + ruled(u"870", 15, u"2"));
        writeWorkbook(t.path(u"fatduz"_s), u"Sheet1"_s, bookRows(sheet));
    }

    /// Opens a screen, which connects, or connects one that is open once more.
    void connectScreen(const QString &screen)
    {
        if (!window.findChild<QWidget *>(screen))
            return window.open(screen);
        if (auto *fat = window.openScreen<FatWindow>(u"fat"))
            fat->fat().link.sqlyukle();
        if (auto *fatduz = window.openScreen<FatduzWindow>(u"fatduz"))
            fatduz->fatduz().link.sqlyukle();
        if (auto *sayim = window.openScreen<SayimWindow>(u"sayimform"))
            sayim->sayimform().link.sqlyukle();
    }
    void read(const QString &screen)
    {
        drop(*window.findChild<QWidget *>(screen), t.path(screen));
        QCoreApplication::processEvents(); // the step is over
        QTRY_VERIFY(!strip());
    }
    /// Without a look at what comes in before.
    void readAtOnce(const QString &screen)
    {
        auto *of = window.findChild<QWidget *>(screen);
        Q_EMIT of->findChild<FileDrop *>()->dropped(t.path(screen));
    }
    /// What Logo gave the rows of the screen's list.
    QString given(const QString &screen)
    {
        if (auto *fat = window.openScreen<FatWindow>(screen))
            return column(fat->fat().liste.l1, L1::EFatura);
        if (auto *fatduz = window.openScreen<FatduzWindow>(screen))
            return column(fatduz->fatduz().liste.l1, L1::EFatura);
        return column(window.openScreen<SayimWindow>(screen)->sayimform().l1, Sayimform::StokKodu);
    }
    QString label(const QString &screen, const char *name)
    {
        return find<QLabel>(qUtf8Printable(screen), name)->text();
    }
    WaitStrip *strip() { return window.findChild<WaitStrip *>(); }
    /// As a key arrives from the desktop.
    void strike(int key, Qt::KeyboardModifiers modifiers = {})
    {
        for (const auto type : {QEvent::ShortcutOverride, QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(window.windowHandle(), new QKeyEvent(type, key, modifiers));
    }
    /// As an event of the mouse arrives from the desktop.
    void point(QEvent::Type type, QWidget *widget)
    {
        const QPointF place = widget->mapTo(&window, widget->rect().center());
        QCoreApplication::postEvent(
            window.windowHandle(), new QMouseEvent(type, place, window.mapToGlobal(place),
                                                   Qt::LeftButton, Qt::LeftButton, Qt::NoModifier));
    }
    void clickAt(QWidget *widget)
    {
        point(QEvent::MouseButtonPress, widget);
        point(QEvent::MouseButtonRelease, widget);
    }

private:
    AnswerWait m_wait;
};

/// Counts the events of a type that arrive at what it watches.
class Arrivals : public QObject
{
public:
    explicit Arrivals(QEvent::Type type)
        : m_type(type)
    {
    }
    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == m_type ? 1 : 0;
        return false;
    }

private:
    QEvent::Type m_type;
};

// Each fault at each of the screens, but for those of which only one has it.
void addScreensAndFaults(const QMap<TdsFault, QString> &onlyOn = {})
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<TdsFault>("fault");
    for (const QString &screen : {u"fat"_s, u"fatduz"_s, u"sayimform"_s}) {
        for (auto at = faults().cbegin(); at != faults().cend(); ++at) {
            if (onlyOn.value(at.value(), screen) == screen)
                QTest::addRow("%s: %s", qPrintable(screen), qPrintable(at.key()))
                    << screen << at.value();
        }
    }
}

} // namespace

class TestLogoLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aReadingEndsAtAFaultAndTheNextOneIsWhole_data() { addScreensAndFaults(); }
    void aReadingEndsAtAFaultAndTheNextOneIsWhole()
    {
        QFETCH(QString, screen);
        QFETCH(TdsFault, fault);
        const bool isCount = screen == u"sayimform";
        const QString whole = isCount ? u"ŞKR,ŞKR"_s : u"Evet,Evet,Evet"_s;
        Desk desk;
        desk.whileWaiting = [&] {
            if (comesNever(fault))
                desk.strike(Qt::Key_F12);
        };
        desk.logo.behave({.fault = fault, .faultAt = 1}); // of 3 or, two for each row, 4
        desk.connectScreen(screen);
        desk.read(screen);
        const bool isGiven = fault == TdsFault::Late;
        const bool isCutBehind = fault == TdsFault::CutBehind;
        const QString half = isCount ? QString() : isCutBehind ? u"Evet,Evet,"_s : u"Evet,,"_s;
        QCOMPARE(desk.given(screen), isGiven ? whole : half);
        if (isGiven || comesNever(fault)) // others may be late on a busy machine
            QVERIFY(desk.waits > 0);
        QVERIFY(!desk.strip());
        QCOMPARE(desk.logo.statements().size(), isGiven ? (isCount ? 4 : 3) : 2);
        const bool isLost = !isGiven && fault != TdsFault::Refusal;
        QCOMPARE(desk.label(screen, "Label9"),
                 isLost ? u"SQL Bağlantı Yok"_s : u"SQL Bağlantı Var"_s);
        QCOMPARE(desk.boxes.shown.size(), isGiven ? 0 : 1);
        if (!isGiven) {
            const Box box = desk.boxes.shown.takeFirst();
            const QString reason = fault == TdsFault::Refusal ? u"olmaz"_s
                                   : comesNever(fault)        ? u"Logo'nun yanıtı beklenmedi"_s
                                                       : u"SQL Server ile bağlantı koptu"_s;
            QVERIFY2(box.text.startsWith(reason), qPrintable(box.text));
            QCOMPARE(box.title, isCount ? QString() : u"Dikkat"_s);
            QCOMPARE(box.icon, isCount ? Icon::None : Icon::Stop);
            QCOMPARE(box.text.endsWith(u" E-Fatura Okunurken Hata Oluştu"), !isCount);
            const int row = (isCount ? 1 : 2) + (isCutBehind ? 1 : 0);
            QVERIFY(desk.label(screen, "bilgi").contains(u" %1. satırda "_s.arg(row)));
            QVERIFY(isCount || desk.find<QProgressBar>(qPrintable(screen), "pr1")->isVisible());
        }

        desk.logo.behave({});
        if (isLost)
            desk.connectScreen(screen);
        desk.read(screen);
        QCOMPARE(desk.given(screen), whole);
        QCOMPARE(desk.boxes.shown.size(), 0);
    }

    void aScreenOpensWhateverTheLoginComesTo_data()
    {
        // They take five seconds each, and the three screens ask in the same way.
        addScreensAndFaults({{TdsFault::Hang, u"fat"_s},
                             {TdsFault::Noise, u"fatduz"_s},
                             {TdsFault::LongPacket, u"sayimform"_s},
                             {TdsFault::NoEnd, u"fat"_s}});
    }
    void aScreenOpensWhateverTheLoginComesTo()
    {
        QFETCH(QString, screen);
        QFETCH(TdsFault, fault);
        Desk desk;
        desk.logo.behave({.loginFault = fault});
        desk.connectScreen(screen);
        const bool isThere =
            fault == TdsFault::Late || fault == TdsFault::LongToken || fault == TdsFault::CutBehind;
        QCOMPARE(desk.boxes.shown.size(), isThere ? 0 : 1);
        if (!isThere) {
            const Box box = desk.boxes.shown.takeFirst();
            QCOMPARE(box.title, QString());
            QVERIFY2(box.icon == Icon::None && box.text.startsWith(u"SQL Server "),
                     qPrintable(box.text));
            QCOMPARE(desk.label(screen, "Label9"), u"SQL Bağlantı Yok"_s);
        }
        desk.logo.behave({});
        if (!isThere || fault == TdsFault::CutBehind)
            desk.connectScreen(screen);
        desk.read(screen);
        QVERIFY(desk.given(screen).startsWith(screen == u"sayimform" ? u"ŞKR,ŞKR" : u"Evet,Evet"));
        QCOMPARE(desk.boxes.shown.size(), 0);
    }

    void theSettingsScreenGetsOverEachFault_data()
    {
        addTable(uR"(
case                     ; login       ; word       ; fault       ; tested ; titles
login hangs              ; hang        ;            ;             ; no     ;
login late               ; late        ;            ;             ; yes    ; 3
login cut before         ; cut before  ;            ;             ; no     ;
login cut amid           ; cut amid    ;            ;             ; no     ;
login cut behind         ; cut behind  ;            ;             ; no     ;
login refused            ; refusal     ;            ;             ; no     ;
login nonsense           ; nonsense    ;            ;             ; no     ;
login of a long token    ; long token  ;            ;             ; yes    ; 3
login without an end     ; no end      ;            ;             ; no     ;
firms hang               ;             ; L_CAPIFIRM ; hang        ; yes    ; 3
firms late               ;             ; L_CAPIFIRM ; late        ; yes    ; 3
firms cut before         ;             ; L_CAPIFIRM ; cut before  ; no     ;
firms cut amid           ;             ; L_CAPIFIRM ; cut amid    ; no     ;
firms cut behind         ;             ; L_CAPIFIRM ; cut behind  ; yes    ; 0
firms refused            ;             ; L_CAPIFIRM ; refusal     ; yes    ; 3
firms nonsense           ;             ; L_CAPIFIRM ; nonsense    ; no     ;
firms of a long token    ;             ; L_CAPIFIRM ; long token  ; no     ;
firms without an end     ;             ; L_CAPIFIRM ; no end      ; no     ;
titles hang              ;             ; ='C2'      ; hang        ; yes    ; 1
titles late              ;             ; ='C2'      ; late        ; yes    ; 3
titles cut before        ;             ; ='C2'      ; cut before  ; yes    ; 1
titles cut amid          ;             ; ='C2'      ; cut amid    ; yes    ; 2
titles cut behind        ;             ; ='C2'      ; cut behind  ; yes    ; 2
titles refused           ;             ; ='C2'      ; refusal     ; yes    ; 1
titles nonsense          ;             ; ='C2'      ; nonsense    ; yes    ; 2)"_s);
    }
    void theSettingsScreenGetsOverEachFault()
    {
        Desk desk;
        desk.logo.behave({.loginFault = faults().value(fetch("login")),
                          .fault = faults().value(fetch("fault")),
                          .faultWord = fetch("word")});
        Grid cards({{u"kod"_s}, {u"unvan"_s}});
        for (const QString &code : {u"C1"_s, u"C2"_s, u"C3"_s})
            cards.setCell(cards.addRow(code), 1, u"Yeni"_s);
        SqlbaglantiWindow window(desk.program, &cards, SqlbaglantiWindow::Way::Update);
        const auto ends = [&](Sqlbaglanti &screen, void (Sqlbaglanti::*step)(),
                              const QString &title) {
            desk.boxes.shown.clear();
            QElapsedTimer time;
            time.start();
            (screen.*step)();
            return time.elapsed() < 8000 && desk.boxes.shown.size() > 0 &&
                   desk.boxes.shown.last().title == title;
        };
        Sqlbaglanti &screen = window.sqlbaglanti();
        const bool tested = fetch("tested") == u"yes";
        QVERIFY(ends(screen, &Sqlbaglanti::sqltest, u"Dikkat"_s));
        QCOMPARE(desk.boxes.shown.last().text,
                 tested ? u"Bağlantı Sağlandı..."_s : u"Bağlantı Sağlanamadı..."_s);
        const bool isRefused =
            !tested && !fetch("login").isEmpty() && fetch("login") != u"cut behind";
        QCOMPARE(desk.boxes.shown.size(), isRefused ? 2 : 1); // the first tells why
        const bool hasFirms = screen.firma.entries().size() == 1;
        QCOMPARE(hasFirms,
                 tested &&
                     !QStringList({u"firms hang"_s, u"firms refused"_s}).contains(caseName()));
        QCOMPARE(screen.bilgi.text().isEmpty(), hasFirms || isRefused);
        if (tested) {
            const bool isWhole = fetch("titles") == u"3";
            screen.firma.setText(u"12- A"_s);
            QVERIFY(
                ends(screen, &Sqlbaglanti::guncellemebaslat, isWhole ? u"Dikkat"_s : QString()));
            QCOMPARE(desk.boxes.shown.size(), 1);
            const QString written =
                u"select count(*) from LG_012_CLCARD where DEFINITION_='Yeni'"_s;
            QCOMPARE(desk.logo.run(written)[0][0], fetch("titles"));
        }

        desk.logo.behave({});
        QVERIFY(ends(screen, &Sqlbaglanti::sqltest, u"Dikkat"_s));
        QCOMPARE(desk.boxes.shown.last().text, u"Bağlantı Sağlandı..."_s);
        screen.firma.setText(u"12- A"_s);
        QVERIFY(ends(screen, &Sqlbaglanti::guncellemebaslat, u"Dikkat"_s));
        QCOMPARE(desk.boxes.shown.last().text, u"Cari Güncelleme Tamamlandı..."_s);
        QCOMPARE(desk.waits, 0); // its statements have a time-out
    }

    void nothingElseGetsInWhileAnAnswerIsAwaited()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.read(u"fat"_s);
        auto *fat = desk.window.openScreen<FatWindow>(u"fat"_s);
        QTRY_VERIFY(fat->isVisible());
        auto *date = fat->findChild<QLineEdit *>(u"d1"_s);
        QTest::keyClicks(date, u"1"_s); // not yet taken over
        int ticks = 0;
        int takings = 0;
        Arrivals activations(QEvent::WindowActivate); // at which the screen asks its rules
        fat->installEventFilter(&activations);
        Arrivals returns(QEvent::Show); // from the taskbar, at which it does so too
        fat->installEventFilter(&returns);
        Arrivals paintings(QEvent::Paint);
        bool isRead = false;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(0);
        connect(date, &QLineEdit::editingFinished, this, [&] { ++takings; });
        Beside beside;
        beside.start<int>([](const std::atomic_bool &) { return 1; }, [&](int) { isRead = true; });
        QString during;
        int looks = 0;
        const auto disturb = [&] {
            QVERIFY(desk.strip());
            ++looks;
            desk.strip()->installEventFilter(&paintings);
            desk.strike(Qt::Key_O, Qt::ControlModifier);
            desk.strike(Qt::Key_Escape);
            desk.strike(Qt::Key_F1);
            desk.strike(Qt::Key_F5);
            desk.clickAt(fat->findChild<QWidget *>(u"chameleonButton5"_s));
            desk.clickAt(fat->findChild<QWidget *>(u"chameleonButton4"_s));
            press(*fat, u"chameleonButton2"_s);
            QTest::keyClick(fat, Qt::Key_F5);
            drop(*fat, desk.t.path(u"fat"_s));
            desk.window.close();
            desk.window.findChild<QAction *>(u"stkkart"_s)->trigger();
            QFocusEvent out(QEvent::FocusOut, Qt::OtherFocusReason);
            QCoreApplication::sendEvent(date, &out);
            QEvent activate(QEvent::WindowActivate);
            QCoreApplication::sendEvent(fat, &activate);
            QShowEvent back;
            QSpontaneKeyEvent::setSpontaneous(&back);
            qApp->notify(fat, &back);
            during = u"%1 %2 %3 %4 %5"_s.arg(ticks)
                         .arg(takings)
                         .arg(isRead)
                         .arg(activations.count)
                         .arg(returns.count);
        };
        desk.whileWaiting = [&] { // as the desktop's events do
            QMetaObject::invokeMethod(qApp, disturb, Qt::QueuedConnection);
        };
        const QWidgetList windows = QApplication::topLevelWidgets();
        desk.logo.behave({.fault = TdsFault::Late});
        ticks = 0;
        desk.readAtOnce(u"fat"_s);
        QVERIFY(looks > 3 && paintings.count > 0);
        QCOMPARE(during, u"0 0 0 0 0"_s);
        QCOMPARE(desk.logo.statements().size(), 6);
        QCOMPARE(desk.given(u"fat"_s), u"Evet,Evet,Evet"_s);
        QVERIFY(desk.t.dialogs.asked.isEmpty() && desk.boxes.shown.isEmpty());
        QVERIFY(desk.window.isVisible() && fat->isVisible());
        QCOMPARE(QApplication::topLevelWidgets().size(), windows.size()); // no guide
        QVERIFY(!desk.window.findChild<QWidget *>(u"stoktrf"_s));
        // They come behind it.
        QTRY_VERIFY(ticks > 0 && takings > 0 && isRead && activations.count > 0 &&
                    returns.count > 0);
        QCOMPARE(desk.logo.statements().size(), 6);
    }

    void theStripStaysThroughManyShortWaits()
    {
        Desk desk(Milliseconds(1000)); // longer than each answer takes, shorter than all of them
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.queryDelay = 800});
        QSet<WaitStrip *> strips;
        qsizetype pressedAt = 0;
        desk.whileWaiting = [&] {
            strips << desk.strip();
            const qsizetype statement = desk.logo.statements().size();
            const bool isFirst = pressedAt == 0;
            if (!isFirst && statement == pressedAt)
                return;
            pressedAt = isFirst ? statement : pressedAt;
            // Pressed in one wait, let go in another.
            desk.point(isFirst ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease,
                       desk.strip()->button());
        };
        desk.read(u"fat"_s);
        QCOMPARE(strips.size(), 1);
        QCOMPARE(desk.given(u"fat"_s), u"Evet,Evet,"_s);
        QCOMPARE(desk.logo.statements().size(), 3);
        QCOMPARE(desk.boxes.shown.size(), 1);
    }

    void eachReadingHasASilenceOfItsOwn()
    {
        Desk desk(Milliseconds(3000));
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.queryDelay = 600});
        desk.read(u"fat"_s);
        desk.read(u"fat"_s);
        QCOMPARE(desk.logo.statements().size(), 6);
        QCOMPARE(desk.waits, 0);
    }

    void aBoxThatComesInAllTheSameCanBeAnswered()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.fault = TdsFault::Hang});
        bool isAnswered = false;
        bool isAsked = false;
        const auto ask = [&] {
            QMessageBox box;
            QTimer answer;
            connect(&answer, &QTimer::timeout, &box,
                    [&box] { QTest::keyClick(&box, Qt::Key_Escape); });
            answer.start(20);
            box.exec();
            isAnswered = true;
            desk.strike(Qt::Key_F12);
        };
        desk.whileWaiting = [&] {
            if (!std::exchange(isAsked, true))
                QMetaObject::invokeMethod(qApp, ask, Qt::QueuedConnection);
        };
        desk.read(u"fat"_s);
        QVERIFY(isAnswered);
        QCOMPARE(desk.boxes.shown.size(), 1);
    }

    void theBoxOfAStepStandsWithoutTheStrip()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.fault = TdsFault::Hang});
        bool hasStrip = true;
        desk.boxes.whileShown = [&] {
            QCoreApplication::processEvents(); // as its own loop does
            hasStrip = desk.strip();
        };
        desk.whileWaiting = [&] {
            desk.strike(Qt::Key_F12);
        };
        desk.read(u"fat"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
        QVERIFY(!hasStrip);
    }

    void whatComesWithTheAnswerDoesNotReachWhatLiesUnderTheStrip()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.queryDelay = 100});
        auto *fat = desk.window.openScreen<FatWindow>(u"fat"_s);
        int presses = 0;
        for (auto *button : fat->findChildren<QAbstractButton *>())
            connect(button, &QAbstractButton::pressed, this, [&presses] { ++presses; });
        drop(*fat, desk.t.path(u"fat"_s));
        QVERIFY(desk.strip());
        desk.clickAt(fat->findChild<QWidget *>(u"chameleonButton4"_s));
        desk.clickAt(desk.strip()->button());
        QTRY_VERIFY(!desk.strip());
        QCOMPARE(presses, 0);
        QCOMPARE(desk.given(u"fat"_s), u"Evet,Evet,Evet"_s);
        desk.clickAt(fat->findChild<QWidget *>(u"chameleonButton4"_s));
        QTRY_COMPARE(presses, 1);
    }

    void theKeyCountsBeforeTheStripToo()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.fault = TdsFault::Hang});
        desk.strike(Qt::Key_F12); // and the reading begins before it is looked at
        desk.readAtOnce(u"fat"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
        QCOMPARE(desk.logo.statements().size(), 1);
    }

    void aReaderForTheBlindPressesTheButton()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.fault = TdsFault::Hang});
        bool isPressed = false;
        desk.whileWaiting = [&] {
            if (!std::exchange(isPressed, true))
                QAccessible::queryAccessibleInterface(desk.strip()->button())
                    ->actionInterface()
                    ->doAction(QAccessibleActionInterface::pressAction());
        };
        desk.read(u"fat"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
    }

    void theButtonEndsTheWaitAndTellsHow()
    {
        Desk desk;
        desk.connectScreen(u"sayimform"_s);
        desk.logo.behave({.fault = TdsFault::Hang});
        QStringList seen;
        desk.whileWaiting = [&] {
            const QPushButton *button = desk.strip()->button();
            seen << button->text() << button->toolTip() << desk.strip()->accessibleName();
            QVERIFY(desk.strip()->isVisible() && button->isVisible() && button->isEnabled());
            desk.clickAt(desk.strip()->button());
        };
        desk.read(u"sayimform"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
        QCOMPARE(seen[0], u"Beklemeyi bırak"_s);
        QVERIFY(seen[1].contains(u"(F12)") && seen[2].contains(u"F12"));
        QCOMPARE(desk.logo.statements().size(), 1);
        QVERIFY(!desk.strip());
        desk.read(u"sayimform"_s); // the line was left, and is not used again
        QVERIFY(desk.boxes.shown.last().text.startsWith(u"SQL Server ile bağlantı kopmuş"));
        QCOMPARE(desk.logo.statements().size(), 1);
    }

    void aQuickServerShowsNothing()
    {
        Desk desk(Milliseconds(2000));
        desk.logo.behave({.fault = TdsFault::Late, .faultAt = 1});
        desk.connectScreen(u"fat"_s);
        desk.read(u"fat"_s);
        QCOMPARE(desk.given(u"fat"_s), u"Evet,Evet,Evet"_s);
        QCOMPARE(desk.waits, 0);
    }

    void anAnswerThatComesBehindItsScreenHarmsNothing()
    {
        Desk desk;
        desk.connectScreen(u"fat"_s);
        desk.logo.behave({.queryDelay = 700});
        desk.whileWaiting = [&] {
            desk.strike(Qt::Key_F12);
        };
        desk.read(u"fat"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
        delete desk.window.openScreen<FatWindow>(u"fat"_s);
        QCOMPARE(desk.logo.connections(), 1); // the driver still waits
        QTRY_COMPARE(desk.logo.connections(), 0);
        desk.boxes.shown.clear();
        desk.logo.behave({});
        desk.connectScreen(u"sayimform"_s);
        desk.read(u"sayimform"_s);
        QCOMPARE(desk.given(u"sayimform"_s), u"ŞKR,ŞKR"_s);
    }
};

QTEST_MAIN(TestLogoLine)
#include "tst_logoline.moc"
