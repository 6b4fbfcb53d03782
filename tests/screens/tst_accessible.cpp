// What people who don't see the windows are told: every control has a name, every value is read
// with its caption, and what changes by itself is announced.

#include "app/realports.h"
#include "cards/screens/crwindow.h"
#include "controls/gridview.h"
#include "controls/keyedbutton.h"
#include "frame/mainwindow.h"
#include "invoices/screens/fatwindow.h"
#include "logolink/screens/sqlbaglantiwindow.h"
#include "slips/screens/slipwindow.h"
#include "store/definition.h"
#include "store/screens/logoperwindow.h"
#include "support/driving.h"
#include "support/places.h"
#include "support/ruler.h"
#include "support/shownframe.h"
#include "support/table.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QShortcut>
#include <QTableView>
#include <QTimer>
#include <QToolButton>

using namespace kervan;

namespace {

QAccessibleInterface *accessible(QWidget *widget)
{
    return QAccessible::queryAccessibleInterface(widget);
}

// What a reader says of it. The name of a list to choose from is its choice, and what it is called
// stands in its label.
QString nameOf(const QAccessibleInterface &at)
{
    if (at.role() != QAccessible::ComboBox)
        return at.text(QAccessible::Name);
    const auto labels = at.relations(QAccessible::Label);
    return labels.isEmpty() ? at.text(QAccessible::Description)
                            : labels.first().first->text(QAccessible::Name);
}

QString nameOf(QWidget *widget)
{
    return nameOf(*accessible(widget));
}

bool hasWord(const QString &text)
{
    static const QRegularExpression word(u"\\p{L}{2}"_s);
    return text.contains(word);
}

bool isOperated(QAccessible::Role role)
{
    static const QSet<QAccessible::Role> roles{
        QAccessible::Button,      QAccessible::ButtonMenu,  QAccessible::CheckBox,
        QAccessible::RadioButton, QAccessible::ComboBox,    QAccessible::EditableText,
        QAccessible::SpinBox,     QAccessible::Table,       QAccessible::List,
        QAccessible::ProgressBar, QAccessible::ScrollBar,   QAccessible::Slider,
        QAccessible::MenuItem,    QAccessible::ColumnHeader};
    return roles.contains(role);
}

QStringList sent; // to readers, by a platform that has them

void take(QAccessibleEvent *event)
{
    if (event->type() == QAccessible::ObjectShow &&
        event->accessibleInterface()->role() == QAccessible::Notification)
        sent << event->accessibleInterface()->text(QAccessible::Name);
}

// Walks what is shown of a screen, as the tools of those who don't see it do, and lists its faults.
class Walk
{
public:
    explicit Walk(QWidget &screen)
        : m_screen(screen)
    {
        visit(*accessible(&screen));
        for (QWidget *widget : screen.findChildren<QWidget *>()) {
            const bool comesLater = qobject_cast<QProgressBar *>(widget);
            if ((isShown(widget) || comesLater) && !m_seen.contains(widget))
                look(*accessible(widget));
        }
        for (QAbstractButton *button : screen.findChildren<QAbstractButton *>()) {
            if (isShown(button))
                lookAtKeys(*button);
        }
        for (QLabel *label : screen.findChildren<QLabel *>()) {
            if (isShown(label) && !label->text().trimmed().isEmpty())
                lookAtLabel(*label);
        }
    }
    const QStringList &faults() const { return m_faults; }
    qsizetype controls() const { return m_names.size(); }

private:
    bool isShown(const QWidget *widget) const
    {
        return widget == &m_screen || widget->isVisibleTo(&m_screen);
    }
    void visit(QAccessibleInterface &at) // NOLINT(misc-no-recursion): as deep as the windows are
    {
        look(at);
        for (int i = 0; i < at.childCount(); ++i) {
            QAccessibleInterface *child = at.child(i);
            const auto *widget = child ? qobject_cast<QWidget *>(child->object()) : nullptr;
            if (child && child->role() != QAccessible::Cell && (!widget || isShown(widget)))
                visit(*child);
        }
    }
    void look(QAccessibleInterface &at)
    {
        auto *widget = qobject_cast<QWidget *>(at.object());
        if (widget && m_seen.contains(widget))
            return;
        m_seen << widget;
        const bool isReached = widget && widget->focusPolicy() != Qt::NoFocus &&
                               !widget->focusProxy() && widget != &m_screen;
        if (!isReached && !isOperated(at.role()))
            return;
        if (at.role() == QAccessible::ColumnHeader && at.rect().isEmpty())
            return; // of a hidden column
        const QString name = nameOf(at);
        if (!hasWord(name))
            return tell(at, u"has no name, but \"%1\""_s.arg(name));
        if (!isReached)
            return;
        for (QWidget *other : m_names.values(name)) {
            if (!other->isAncestorOf(widget))
                tell(at, u"has the same name as another: "_s + name);
        }
        m_names.insert(name, widget);
    }
    // An access key in the caption, or keys that stand behind it or in the hint and lead to it.
    void lookAtKeys(const QAbstractButton &button)
    {
        const bool isPartOfACalendar = button.parent()->objectName().startsWith(u"qt_calendar");
        const bool isOfABox = qobject_cast<QDialogButtonBox *>(button.parent());
        const bool isTick = button.isCheckable() && !qobject_cast<const QToolButton *>(&button);
        if (isTick || isPartOfACalendar || isOfABox || button.inherits("QTableCornerButton") ||
            !QKeySequence::mnemonic(button.text()).isEmpty())
            return;
        static const QRegularExpression hint(u"\\(([^()]+)\\)$"_s);
        const QString keys = hint.match(button.toolTip()).captured(1);
        QAccessibleInterface *at = QAccessible::queryAccessibleInterface(
            const_cast<QAbstractButton *>(&button)); // NOLINT: the interface wants it so
        if (keys.isEmpty())
            return tell(*at, u"has no key"_s);
        const auto *pushed = qobject_cast<const QPushButton *>(&button);
        if (pushed && !pushed->text().isEmpty() && !qobject_cast<const KeyedButton *>(pushed))
            tell(*at, u"does not show its key"_s);
        const QList<QShortcut *> shortcuts = m_screen.window()->findChildren<QShortcut *>();
        if (std::ranges::none_of(
                shortcuts,
                [&](const QShortcut *shortcut) { return shortcut->key() == QKeySequence(keys); }) &&
            !QStringList({u"Esc"_s, u"F1"_s, u"F4"_s, u"Enter"_s}).contains(keys))
            tell(*at, u"names a key that nothing answers to: "_s + keys);
    }
    // What a label shows is read; a caption belongs to what stands beside it.
    void lookAtLabel(QLabel &label)
    {
        if (!nameOf(&label).contains(label.text()))
            tell(*accessible(&label), u"reads \"%1\" and hides its text"_s.arg(nameOf(&label)));
        else if (!hasWord(nameOf(&label)))
            tell(*accessible(&label), u"is a value without its caption"_s);
        if (label.text().endsWith(u':') && !label.buddy())
            tell(*accessible(&label), u"is a caption of nothing"_s);
        if (label.buddy() && !nameOf(label.buddy()).contains(label.text()))
            tell(*accessible(&label), u"is no part of the name of its control"_s);
    }
    void tell(const QAccessibleInterface &at, const QString &what)
    {
        const QObject *object = at.object();
        m_faults << (object
                         ? u"%1 %2 \"%3\" in %4 %5"_s.arg(
                               QString::fromLatin1(object->metaObject()->className()),
                               object->objectName(), at.text(QAccessible::Name),
                               object->parent() ? object->parent()->objectName() : QString(), what)
                         : u"a part of the role %1 %2"_s.arg(at.role()).arg(what));
    }

    QWidget &m_screen;
    QSet<QWidget *> m_seen;
    QMultiHash<QString, QWidget *> m_names;
    QStringList m_faults;
};

/// The frame over a program folder with something in each table and file.
struct Frame : ShownFrame
{
    Frame()
    {
        t.fill({u"insert into firma values (Null,'1','','Merkez','','D1','','120','')"_s,
                u"insert into odm values (Null,'30','Otuz','','','','','','')"_s,
                u"insert into urun values ('P1','Çay','','10,50')"_s});
        for (const QString &code : {u"kasa.kvz"_s, u"bank.kvz"_s})
            writeBytes(t.path(code), "100.01\r\n");
        show();
    }
    // What a reader spoke last.
    QString told() const
    {
        auto *voice = window.findChild<QWidget *>(u"duyuru"_s, Qt::FindDirectChildrenOnly);
        return voice ? nameOf(voice) : QString();
    }
    // A file of two accounts.
    QString accounts()
    {
        writeBytes(t.path(u"cari.txt"_s), ruled(u"CR", 3, u"10000101", 11, u"DENİZ MARKET") +
                                              ruled(u"CR", 3, u"10000102", 11, u"IŞIK BÜFE"));
        return t.path(u"cari.txt"_s);
    }
    QWidget *open(const QString &word)
    {
        window.open(word);
        auto *screen = window.findChild<QWidget *>(word);
        [[maybe_unused]] const bool active = QTest::qWaitForWindowActive(screen->window());
        return screen;
    }
};

} // namespace

class AccessibleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyControlHasANameOfItsOwnAndEveryButtonAKey_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::addColumn<QString>("step");
        const auto row = [](const QString &screen, const QString &step = {}) {
            QTest::newRow(qPrintable(u"%1 %2"_s.arg(screen, step))) << screen << step;
        };
        for (const QStringList &screen : blocksOf(testData(u"screens.txt"_s))) {
            const QString word = screen[0].section(u'|', 0, 0);
            row(word);
            if (definitionOf(word))
                row(word, u"chameleonButton1"_s); // the page of a record
        }
        row(u"sqlbaglanti"_s, u"guncellemeyegec"_s); // the page of the update
        row(u"fat"_s, u"calendar"_s);
        row(u"urunform"_s, u"edit"_s);
        row(u"cr"_s, u"notes"_s);
        row(u"cr"_s, u"find"_s);
        row(u"MDIForm1"_s);
    }
    void everyControlHasANameOfItsOwnAndEveryButtonAKey()
    {
        QFETCH(QString, screen);
        QFETCH(QString, step);
        Frame frame;
        QWidget *walked = screen == u"MDIForm1" ? &frame.window : frame.open(screen);
        if (step == u"calendar") {
            QTest::keyClick(walked->findChild<QWidget *>(u"d1"_s), Qt::Key_F4);
            walked = QApplication::activePopupWidget();
        } else if (step == u"edit") {
            QTest::keyClick(walked->findChild<QTableView *>(), Qt::Key_7);
        } else if (step == u"notes") {
            Notes &notes = static_cast<CrWindow *>(walked)->cr().bilgi;
            notes.add(u"bir arıza"_s);
            notes.addDocument(frame.t.path(u"belge.xml"_s), u"cari"_s, 2, QTime(9, 5));
            press(*walked, u"ayrinti"_s);
        } else if (step == u"find") {
            static_cast<CrWindow *>(walked)->cr().dosyaac(frame.accounts());
            auto *list = walked->findChild<GridView *>();
            list->setMarker([](int) { return RowMark{RowMark::Error, u"kod boş"_s}; });
            list->marksChanged(1);
            QTest::keyClick(list, Qt::Key_F, Qt::ControlModifier);
            QTest::keyClicks(walked->findChild<QWidget *>(u"aranan"_s), u"market"_s);
            walked->findChild<QAbstractButton *>(u"suz"_s)->click();
        } else if (!step.isEmpty()) {
            press(*walked, step);
        }
        const Walk walk(*walked);
        QVERIFY2(walk.faults().isEmpty(), qPrintable(walk.faults().join(u'\n')));
        QVERIFY(walk.controls() > 0); // it saw something
    }

    void aListThatNothingOpensAndALongBoxHaveNamesToo()
    {
        LogoperWindow list;
        list.show();
        QCOMPARE(Walk(list).faults(), QStringList());
        QStringList faults{u"no box came"_s};
        QTimer soon;
        soon.setSingleShot(true);
        connect(&soon, &QTimer::timeout, this, [&] {
            QWidget *box = QApplication::activeModalWidget();
            if (!box) // Windows' own loop runs timers while waiting input is dropped
                return soon.start(20);
            faults = Walk(*box).faults();
            box->close();
        });
        soon.start(0);
        ScreenBoxes().show({u"uzun bir metin "_s.repeated(200)});
        QCOMPARE(faults.join(u'\n'), QString());
    }

    void aValueIsReadWithItsCaptionAndItsLabelLeadsToIt_data()
    {
        addTable(uR"(
case         ; screen      ; label             ; read
sb1_2        ; cr          ; Cari Kart Sayısı: ; Cari Kart Sayısı: 2
sb1_3        ; cr          ;                   ; Tarih: 07.03.2024
sb1_4        ; cr          ;                   ; Saat: 09:05:03
kdyaz        ; fat         ; Gen.Kdv:          ; Gen.Kdv: 18
odmplnkod    ; fat         ;                   ; Belgeye yazılan ödeme planı: 30
Label9       ; fat         ;                   ; SQL Bağlantı Var
kdyaz, Düzey ; fatduz      ; Gen.Kdv:          ; Gen.Kdv: 18
kskod        ; cafis2      ; Kasa Kodu:        ; Kasa Kodu: 100.01
Label6       ; sqlbaglanti ;                   ; SQL Bağlantı Yok)"_s);
    }
    void aValueIsReadWithItsCaptionAndItsLabelLeadsToIt()
    {
        Frame frame;
        QWidget *screen = frame.open(fetch("screen"));
        if (auto *cr = qobject_cast<CrWindow *>(screen))
            cr->cr().dosyaac(frame.accounts());
        if (auto *fat = qobject_cast<FatWindow *>(screen))
            fat->fat().odemePlaniKodu.setText(u"30"_s);
        auto *value = screen->findChild<QLabel *>(caseName().section(u',', 0, 0));
        QCOMPARE(nameOf(value), fetch("read"));
        QString label;
        for (const auto &related : accessible(value)->relations(QAccessible::Label)) {
            if (qobject_cast<QLabel *>(related.first->object()))
                label = related.first->text(QAccessible::Name);
        }
        QCOMPARE(label, fetch("label"));
    }

    void whatChangesByItselfIsToldAndWhatIsNotSeenIsNot()
    {
        Frame frame;
        auto *cr = qobject_cast<CrWindow *>(frame.open(u"cr"_s));
        QStringList work;
        connect(&frame.t.program.busy, &Busy::changed, this, [&] { work << frame.told(); });
        cr->cr().dosyaac(frame.accounts());
        QCOMPARE(work.join(u'|'), u"cari.txt okunuyor…|cari.txt okunuyor… bitti"_s);
        QCOMPARE(frame.told(), u"Cari Kart Sayısı: 2"_s);
        cr->cr().bilgi.add(u"bir arıza"_s);
        QCOMPARE(frame.told(), u"bir arıza"_s);
        auto *fat = qobject_cast<FatWindow *>(frame.open(u"fat"_s));
        fat->fat().tanimlar.genelKdv.setText(u"20"_s);
        QCOMPARE(frame.told(), u"Gen.Kdv: 20"_s);
        fat->fat().link.durum.setText(u"SQL Bağlantı Yok"_s);
        QCOMPARE(frame.told(), u"SQL Bağlantı Yok"_s);
        auto *travel = frame.window.inBackground<SlipWindow>(u"cafis2");
        travel->setKasaKodu(u"100.02"_s);
        QCOMPARE(frame.told(), u"SQL Bağlantı Yok"_s);
        frame.window.open(u"cafis2");
        travel->setKasaKodu(u"100.03"_s);
        QCOMPARE(frame.told(), u"Kasa Kodu: 100.03"_s);
    }

    void whatIsToldIsANotificationOfTheWindowInUse()
    {
        Frame frame;
        frame.open(u"cr"_s);
        QWidget *settings = frame.open(u"sqlbaglanti"_s);
        press(*settings, u"guncellemeyegec"_s);
        static_cast<SqlbaglantiWindow *>(settings)->sqlbaglanti().durum.setText(
            u"SQL Bağlantı Var"_s);
        auto *voice = settings->findChild<QWidget *>(u"duyuru"_s);
        QVERIFY(voice && voice->isVisible());
        QCOMPARE(accessible(voice)->role(), QAccessible::Notification);
        QCOMPARE(nameOf(voice), u"SQL Bağlantı Var"_s);
        if (QAccessible::isActive())
            QCOMPARE(sent.last(), u"SQL Bağlantı Var"_s);
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QAccessible::setActive(true);
    QAccessible::installUpdateHandler(&take);
    AccessibleTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_accessible.moc"
