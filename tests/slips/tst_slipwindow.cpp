// The four slip screens in their windows: from a workbook to a document by buttons, keys and drops.

#include "controls/gridview.h"
#include "slips/desk.h"
#include "slips/screens/slipwindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDropEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>

using namespace kervan;

namespace {

struct Shown
{
    TestProgram t;
    SlipWindow window;

    Shown(const SlipForm &form, const QString &sheetFile)
        : window(prepared(sheetFile), form)
    {
        window.resize(1100, 700);
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            QTest::qFail("the window is not active", __FILE__, __LINE__);
    }
    // What is there before the screen opens.
    Program &prepared(const QString &sheetFile)
    {
        writeBytes(t.path(u"bank.kvz"_s), "102\r\n");
        writeBytes(t.path(u"kasa.kvz"_s), "100\r\n");
        writeBytes(t.path(sheetFile), "Mart\r\n");
        t.fill({u"insert into per values (Null,'P7','7')"_s});
        return t.program;
    }
    template<class Widget>
    Widget *find(const QString &name)
    {
        return window.findChild<Widget *>(name);
    }
    QString press(const QString &name)
    {
        auto *button = find<QAbstractButton>(name);
        QTest::mouseClick(button, Qt::LeftButton);
        return button->text();
    }
    void tickAll(const QString &name)
    {
        QTest::mouseClick(find<QCheckBox>(name), Qt::LeftButton, {}, QPoint(8, 8));
    }
    void drop(const QString &path)
    {
        QMimeData mime;
        mime.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &enter);
        QDropEvent event({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&window, &event);
    }
};

} // namespace

class TestSlipWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWorkbookBecomesADocument_data();
    void aWorkbookBecomesADocument();
    void bothListsAreTickedByBoxesAndKeys();
    void commandsThatAreNotShownWorkWhenTriggered();
    void otherDialogsTellTheTravelScreenNewCodes();
    void aDroppedFileIsOfTheKindReadLast();
};

void TestSlipWindow::aWorkbookBecomesADocument_data()
{
    QTest::addColumn<QString>("screen");
    QTest::addColumn<QString>("heading");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("lines");
    QTest::addColumn<QString>("saves"); // caption, and what the document holds, for each command
    QTest::newRow("cafis") << u"cafis"_s << u"CARİ HESAP FİŞ AKTARIMLARI-1"_s << u"a.xlsx"_s
                           << u"T|||K|||Ü|||||D\n#12.5|||K1||C1|BİR|||||1.4.2021"_s
                           << u"buton2=CH Kasa Nakit Xml Kaydet=<SD_CODE>K1<;"
                              "lvButtons_H2=Banka işlem Fişi Xml Kaydet=<BANKACC_CODE>102<"_s;
    QTest::newRow("cafis2") << u"cafis2"_s << u"SEYAHAT EXEL AKTARIMI"_s << u"15032021-7.xls"_s
                            << u"1\n2\n3\n4\n5\nC1||BİR||||||||||||#12.5"_s
                            << u"buton2=Logoya Tahsilatları Aktar=<SD_CODE>P7<"_s;
    QTest::newRow("cafis3") << u"cafis3"_s << u"POS ANALİZ EXEL AKTARIMI"_s
                            << u"POSANALIZ_20210315.xlsx"_s
                            << u"K||C|||||T|TÜR\nK1||C1|BİR||||#12.5|HHSATIS"_s
                            << u"buton2=CH Kasa Nakit Xml Kaydet=<SD_CODE>K1<;"
                               "lvButtons_H2=Banka işlem Fişi Xml Kaydet=<AUXIL_CODE>K1<"_s;
    QTest::newRow("carifisduzey") << u"carifisduzey"_s << u"DÜZEY CARİ FİŞ AKTARIMLARI  [a.xlsx]"_s
                                  << u"a.xlsx"_s << u"D|C|U|A|S||T\n1.3.2021|C1|BİR|AÇ|7||12.5"_s
                                  << u"buton2=Kasa Nakit Xml Kaydet=<SALESMAN_CODE>P7<"_s;
}

void TestSlipWindow::aWorkbookBecomesADocument()
{
    QFETCH(QString, screen);
    QFETCH(QString, heading);
    QFETCH(QString, file);
    QFETCH(QString, lines);
    QFETCH(QString, saves);
    const SlipForm &form = slipForm(screen);
    Shown s(form, form.sheetFile);
    QCOMPARE(s.window.objectName(), screen);
    QCOMPARE(s.find<QLineEdit>(u"Text1"_s)->text(), u"Mart"_s);
    QCOMPARE(s.find<QLineEdit>(u"bankahesapno1"_s)->text(), u"102"_s);
    QCOMPARE(s.find<QLabel>(u"kskod"_s)->text(), u"100"_s);
    // The sheet's name is stored only once it was changed, except on the one screen.
    auto *keep = s.find<QAbstractButton>(u"lvButtons_H1"_s);
    QCOMPARE(keep->isEnabled(), screen == u"carifisduzey");
    QTest::keyClicks(s.find<QLineEdit>(u"Text1"_s), u"2"_s);
    QVERIFY(keep->isEnabled() && !keep->accessibleName().isEmpty());
    s.press(u"lvButtons_H1"_s);
    QCOMPARE(readBytes(s.t.path(form.sheetFile)), QByteArray("Mart2\r\n"));
    QCOMPARE(keep->isEnabled(), screen == u"carifisduzey");

    writeBook(s.t.path(file), u"Mart2"_s, lines);
    s.t.dialogs.answers = {s.t.path(file)};
    s.press(u"buton1"_s);
    QCOMPARE(s.find<QLabel>(u"bart"_s)->text(), heading);
    QCOMPARE(s.find<QLabel>(u"sb1_2"_s)->text(), u"1"_s);
    s.tickAll(u"Check1"_s);
    if (form.hasBankList())
        s.tickAll(u"Check2"_s);
    for (const QString &save : saves.split(u';')) {
        const QString target = s.t.path(save.section(u'=', 0, 0) + u".xml"_s);
        s.t.dialogs.answers = {target};
        s.t.boxes.expect(done);
        QCOMPARE(s.press(save.section(u'=', 0, 0)), save.section(u'=', 1, 1));
        QVERIFY(readBytes(target).contains(save.section(u'=', 2).toLatin1()));
        s.t.boxes.verify();
    }
    QSignalSpy closing(&s.window, &SlipWindow::closeWanted);
    QTest::keyClick(s.find<QWidget>(u"l1"_s), Qt::Key_Escape);
    s.press(u"chameleonButton4"_s);
    QCOMPARE(closing.size(), 2);
}

void TestSlipWindow::bothListsAreTickedByBoxesAndKeys()
{
    Shown s(cafis(), u"x.kvz"_s);
    SlipScreen &screen = s.window.screen();
    writeBook(s.t.path(u"a.xlsx"_s), u"Sayfa1"_s,
              u"T|||K|||Ü|||||D\n#1|||A|||||||||1.4.2021\n#2|||B|||||||||1.4.2021"_s);
    s.drop(s.t.path(u"a.xlsx"_s));
    QStringList order;
    for (QWidget *at = s.find<QWidget>(u"buton1"_s); order.size() < 9;
         at = at->nextInFocusChain()) {
        if ((at->focusPolicy() & Qt::TabFocus) != 0 && at->isVisible() && at->isEnabled())
            order << at->objectName();
    }
    QCOMPARE(order.join(u' '), u"buton1 buton2 lvButtons_H2 Text1 lvButtons_H1 bankahesapno1 "
                               "Check1 l1 Check2"_s);
    s.tickAll(u"Check2"_s);
    QCOMPARE(screen.l2.tickedCount() * 10 + screen.l1.tickedCount(), 20);
    auto *view = s.find<GridView>(u"l1"_s);
    view->setFocus();
    view->selectRow(1);
    QTest::keyClick(view, Qt::Key_Space);
    QVERIFY(screen.l1.ticked(1) && !screen.l1.ticked(0));
    s.tickAll(u"Check1"_s);
    QCOMPARE(screen.l1.tickedCount(), 2);
    s.tickAll(u"Check1"_s);
    QCOMPARE(screen.l1.tickedCount(), 0);
    // A new read unticks the boxes with the rows.
    s.drop(s.t.path(u"a.xlsx"_s));
    QVERIFY(!s.find<QCheckBox>(u"Check2"_s)->isChecked() && screen.l2.tickedCount() == 0);
    QTest::keyClick(&s.window, Qt::Key_D, Qt::ControlModifier);
    QCOMPARE(readBytes(s.t.path(u"exelsayfano.kvz"_s)), QByteArray("Sayfa1\r\n"));
}

void TestSlipWindow::commandsThatAreNotShownWorkWhenTriggered()
{
    for (const auto form : {&cafis, &cafis2, &cafis3, &carifisduzey}) {
        Shown s(form(), u"x.kvz"_s);
        QStringList hidden;
        for (const QAbstractButton *button : s.window.findChildren<QAbstractButton *>()) {
            if (!button->isVisible() && !button->text().isEmpty())
                hidden << button->objectName();
        }
        hidden.sort();
        const QString bank = form == &cafis2 ? u" lvButtons_H2"_s : QString();
        QCOMPARE(hidden.join(u' '),
                 u"chameleonButton1 chameleonButton2 chameleonButton3 chameleonButton5 "
                 "chameleonButton6 chameleonButton7"_s +
                     bank);
        for (const QString &list : {u"l1eski"_s, u"ListView1"_s}) {
            QVERIFY(!s.find<GridView>(list)->isVisible());
            QCOMPARE(s.find<GridView>(list)->model()->columnCount(), 18);
        }
        QCOMPARE(s.find<QGroupBox>(u"f3"_s) == nullptr, form == &carifisduzey);
        writeBytes(s.t.path(u"a.txt"_s), "20\n40\n");
        s.t.dialogs.answers = {s.t.path(u"a.txt"_s)};
        s.find<QAbstractButton>(u"chameleonButton5"_s)->click();
        QCOMPARE(s.window.screen().l1.cell(1, 1), u"Senet"_s);
        s.t.dialogs.answers = {s.t.path(u"b"_s)};
        s.t.boxes.expect(done);
        s.find<QAbstractButton>(u"chameleonButton3"_s)->click();
        QVERIFY(readBytes(s.t.path(u"b.xml"_s)).contains("<CQPN_ROLLS>"));
    }
}

void TestSlipWindow::otherDialogsTellTheTravelScreenNewCodes()
{
    Shown s(cafis2(), u"x.kvz"_s);
    QCOMPARE(s.find<QGroupBox>(u"f3"_s)->title(), u"Fiş Toplamları"_s);
    s.window.setBankaKodu(u"103"_s);
    s.window.setKasaKodu(u"200"_s);
    QCOMPARE(s.find<QLineEdit>(u"bankahesapno1"_s)->text(), u"103"_s);
    QCOMPARE(s.find<QLabel>(u"kskod"_s)->text(), u"200"_s);
}

void TestSlipWindow::aDroppedFileIsOfTheKindReadLast()
{
    Shown s(carifisduzey(), u"x.kvz"_s);
    writeBook(s.t.path(u"a.xlsx"_s), u"Sheet1"_s,
              u"A|B|C|D|E|F|G|H\n1.1.2021|C1||C2||2.2.2021|1|2"_s);
    QCOMPARE(s.t.program.aktifform, u"2"_s);
    s.drop(s.t.path(u"a.xlsx"_s)); // of which kind?
    QVERIFY(s.window.screen().l1.isEmpty() && !s.window.screen().bilgi.text().isEmpty());
    s.t.dialogs.answers = {s.t.path(u"a.xlsx"_s)};
    s.press(u"buton1"_s);
    s.drop(s.t.path(u"a.xlsx"_s));
    QCOMPARE(s.window.screen().l1.cell(0, 5), u"KN000001"_s);
    s.t.dialogs.answers = {s.t.path(u"a.xlsx"_s)};
    QCOMPARE(s.press(u"lvButtons_H3"_s), u"Kredi Kartı Dosyası Oku"_s);
    s.drop(s.t.path(u"a.xlsx"_s));
    QCOMPARE(s.window.screen().l1.cell(0, 5), u"KK000001"_s);
    s.tickAll(u"Check1"_s);
    s.t.dialogs.answers = {s.t.path(u"k.xml"_s)};
    s.t.boxes.expect(done);
    QCOMPARE(s.press(u"lvButtons_H2"_s), u"Kredi Kartı Xml Kaydet"_s);
    QVERIFY(readBytes(s.t.path(u"k.xml"_s)).contains("<TRANNO>KK000001<"));
}

QTEST_MAIN(TestSlipWindow)
#include "tst_slipwindow.moc"
