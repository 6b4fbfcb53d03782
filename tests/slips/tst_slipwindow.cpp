// The four slip screens in their windows: from a workbook to a document by buttons, keys and drops.

#include "controls/gridview.h"
#include "slips/desk.h"
#include "slips/screens/slipwindow.h"
#include "support/driving.h"
#include "support/table.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>

using namespace kervan;

namespace {

struct Shown
{
    TestProgram t;
    SlipWindow window;
    SlipScreen &screen = window.screen();

    explicit Shown(const SlipForm &form)
        : window(prepared(form), form)
    {
        window.show();
        if (!QTest::qWaitForWindowActive(&window))
            QTest::qFail("the window is not active", __FILE__, __LINE__);
    }
    // What is there before the screen opens.
    Program &prepared(const SlipForm &form)
    {
        writeBytes(t.path(u"bank.kvz"_s), "102\r\n");
        writeBytes(t.path(u"kasa.kvz"_s), "100\r\n");
        writeBytes(t.path(form.sheetFile), "Mart\r\n");
        t.fill({u"insert into per values (Null,'P7','7')"_s});
        t.program.folders.xf = t.folder.path();
        return t.program;
    }
    template<class Widget>
    Widget *find(const QString &name)
    {
        return window.findChild<Widget *>(name);
    }
    void press(const QString &name) { kervan::press(window, name); }
    void pick(const QString &command, const QString &file)
    {
        t.dialogs.answers = {t.path(file)};
        press(command);
    }
    // What the command writes behind the box of success.
    QByteArray saved(const QString &command)
    {
        t.boxes.expectDone();
        pick(command, command + u".xml"_s);
        t.boxes.verify();
        return readBytes(t.path(command + u".xml"_s));
    }
    void writeBook(const QString &name, const QString &sheet, const QString &lines)
    {
        writeWorkbook(t.path(name), sheet, bookRows(lines));
    }
};

} // namespace

class TestSlipWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aWorkbookBecomesADocumentOnEachScreen_data()
    {
        // A file of these lines, the heading then, the caption of the list of bank slips if there
        // is one, and what the documents of both saves hold.
        addTable(uR"(
case         ; file                    ; lines                                                    ; heading                              ; bankList                   ; ofButon2           ; ofBankSave
cafis        ; a.xlsx                  ; T|||K|||Ü|||||D\n#12.5|||K1||C1|BİR|||||1.4.2021         ; CARİ HESAP FİŞ AKTARIMLARI-1         ; Banka Fişi Haraket Listesi ; <SD_CODE>K1<       ; <BANKACC_CODE>102<
cafis2       ; 15032021-7.xls          ; 1\n2\n3\n4\n5\nC1||BİR||||||||||||#12.5                  ; SEYAHAT EXEL AKTARIMI                ; Fiş Toplamları             ; <SD_CODE>P7<       ;
cafis3       ; POSANALIZ_20210315.xlsx ; K||C|||||T|TÜR\nK1||C1|BİR||||#12.5|HHSATIS              ; POS ANALİZ EXEL AKTARIMI             ; Banka Fişi Haraket Listesi ; <SD_CODE>K1<       ; <AUXIL_CODE>K1<
carifisduzey ; a.xlsx                  ; D|C|U|A|S||T\n1.3.2021|C1|BİR|AÇ|7||12.5                 ; DÜZEY CARİ FİŞ AKTARIMLARI  [a.xlsx] ;                            ; <SALESMAN_CODE>P7< ;)"_s);
    }
    void aWorkbookBecomesADocumentOnEachScreen()
    {
        const SlipForm &form = slipForm(caseName());
        Shown s(form);
        QCOMPARE(s.find<QLineEdit>(u"bankahesapno1"_s)->text(), u"102"_s);
        QCOMPARE(s.find<QLabel>(u"kskod"_s)->text(), u"100"_s);
        QCOMPARE(s.find<QGroupBox>(u"f1"_s)->title(), u"CH Kasa Nakit Haraket Listesi"_s);
        const auto *bankList = s.find<QGroupBox>(u"f3"_s);
        QCOMPARE(bankList ? bankList->title() : QString(), fetch("bankList"));
        auto *keep = s.find<QAbstractButton>(u"lvButtons_H1"_s);
        QCOMPARE(keep->isEnabled(), form.screen == u"carifisduzey");
        QTest::keyClicks(s.find<QLineEdit>(u"Text1"_s), u"2"_s);
        QVERIFY(keep->isEnabled() && !keep->accessibleName().isEmpty());
        QTest::keyClick(&s.window, Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(readBytes(s.t.path(form.sheetFile)), QByteArray("Mart2\r\n"));

        s.writeBook(fetch("file"), u"Mart2"_s, fetch("lines"));
        s.pick(u"buton1"_s, fetch("file"));
        QCOMPARE(s.find<QLabel>(u"bart"_s)->text(), fetch("heading"));
        QCOMPARE(s.find<QLabel>(u"sb1_2"_s)->text(), u"1"_s);
        const bool isInTheCaption = fetch("heading").contains(fetch("file"));
        QCOMPARE(s.find<QLabel>(u"dosya"_s)->text(),
                 isInTheCaption ? QString() : u"Dosya: "_s + fetch("file"));
        s.press(u"Check1"_s);
        QVERIFY(s.saved(u"buton2"_s).contains(fetch("ofButon2").toLatin1()));
        if (fetch("ofBankSave").isEmpty()) // no such list, or none of its commands is shown
            return;
        s.press(u"Check2"_s);
        QVERIFY(s.saved(u"lvButtons_H2"_s).contains(fetch("ofBankSave").toLatin1()));
        // Both slips are found again, each in front of its row.
        for (const QString &list : {u"l1"_s, u"l2"_s}) {
            auto *view = s.find<GridView>(list);
            QTRY_COMPARE(view->markOf(0).written, RowMark::Same);
            view->actions().last()->trigger();
            QVERIFY(!(list == u"l1"_s ? s.screen.l1 : s.screen.l2).ticked(0));
        }
    }

    void bothListsAreTickedByTheirBoxes()
    {
        Shown s(cafis());
        s.writeBook(u"a.xlsx"_s, u"Mart"_s,
                    u"T|||K|||Ü|||||D\n#1|||A|||||||||1.4.2021\n#2|||B|||||||||1.4.2021"_s);
        drop(s.window, s.t.path(u"a.xlsx"_s));
        s.press(u"Check2"_s);
        QCOMPARE(s.screen.l1.tickedCount(), 0);
        QCOMPARE(s.screen.l2.tickedCount(), 2);
        for (const int ticked : {2, 0}) {
            s.press(u"Check1"_s);
            QCOMPARE(s.screen.l1.tickedCount(), ticked);
        }
        s.press(u"Check1"_s);
        // A new read unticks the boxes with the rows.
        drop(s.window, s.t.path(u"a.xlsx"_s));
        for (const QString &box : {u"Check1"_s, u"Check2"_s})
            QVERIFY2(!s.find<QCheckBox>(box)->isChecked(), qPrintable(box));
        QCOMPARE(s.screen.l1.tickedCount(), 0);
        QCOMPARE(s.screen.l2.tickedCount(), 0);
        const QSignalSpy closing(&s.window, &SlipWindow::closeWanted);
        s.press(u"chameleonButton4"_s);
        QCOMPARE(closing.size(), 1);
    }

    void commandsThatAreNotShownWorkWhenTriggered()
    {
        Shown s(cafis2());
        s.t.dialogs.answers = {s.t.path(u"a.txt"_s), s.t.path(u"b"_s)};
        writeBytes(s.t.path(u"a.txt"_s), "20\n40\n");
        s.find<QAbstractButton>(u"chameleonButton5"_s)->click();
        QCOMPARE(s.screen.l1.cell(1, MetinHareket::IslemTipi), u"Senet"_s);
        s.t.boxes.expectDone();
        s.find<QAbstractButton>(u"chameleonButton3"_s)->click();
        QVERIFY(readBytes(s.t.path(u"b.xml"_s)).contains("<CQPN_ROLLS>"));
        for (const QString &list : {u"l1eski"_s, u"ListView1"_s})
            QCOMPARE(s.find<GridView>(list)->model()->columnCount(), 18);
    }

    void aDroppedFileIsOfTheKindReadLast()
    {
        Shown s(carifisduzey());
        const QString book = s.t.path(u"a.xlsx"_s);
        s.writeBook(u"a.xlsx"_s, u"Mart"_s, u"A|B|C|D|E|F|G|H\n1.1.2021|C1||C2||2.2.2021|1|2"_s);
        QCOMPARE(s.t.program.aktifform, u"2"_s);
        drop(s.window, book); // of which kind?
        QVERIFY(s.screen.l1.isEmpty() && !s.screen.bilgi.text().isEmpty());
        for (const auto &[key, number] :
             {std::pair(Qt::Key_O, u"KN000001"_s), {Qt::Key_K, u"KK000001"_s}}) {
            s.t.dialogs.answers = {book};
            QTest::keyClick(&s.window, key, Qt::ControlModifier);
            drop(s.window, book);
            QCOMPARE(s.screen.l1.cell(0, DuzeyHareket::IslemNo), number);
        }
        s.press(u"Check1"_s);
        QVERIFY(s.saved(u"lvButtons_H2"_s).contains("<TRANNO>KK000001<"));
    }
};

QTEST_MAIN(TestSlipWindow)
#include "tst_slipwindow.moc"
