// Every definition screen and settings dialog in its real window: what is typed, and the rows and
// files that come of it.

#include "base/codepage.h"
#include "cards/screens/stoktrfwindow.h"
#include "controls/gridview.h"
#include "frame/mainwindow.h"
#include "invoices/screens/fatwindow.h"
#include "slips/screens/slipwindow.h"
#include "store/screens/definitionwindow.h"
#include "store/screens/logoperwindow.h"
#include "store/screens/settingswindows.h"
#include "support/driving.h"
#include "support/fakes.h"
#include "support/places.h"
#include "support/table.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableView>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const QString deleteQuestion = u"Kaydi Silmek İstediğinize Eminmisiniz ?"_s;

QLineEdit *text(QWidget &window, const QString &name)
{
    return window.findChild<QLineEdit *>(name);
}

QString headingsOf(QWidget &window)
{
    const auto *view = window.findChild<QTableView *>(u"l1"_s);
    QStringList found;
    for (int i = 0; i < view->model()->columnCount(); ++i)
        found << view->model()->headerData(i, Qt::Horizontal).toString();
    return found.join(u'|');
}

} // namespace

class DefinitionsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRecordIsMadeChangedAndDeleted_data()
    {
        for (const char *column :
             {"columns", "listCaption", "labels", "headings", "inserted", "broughtBack", "changed"})
            QTest::addColumn<QString>(column);
        for (const QStringList &block : blocksOf(testData(u"definitions.txt"_s))) {
            QTestData &row = QTest::newRow(qPrintable(block[0]));
            for (const QString &line : block.sliced(1))
                row << line;
        }
    }
    void aRecordIsMadeChangedAndDeleted()
    {
        const QString broughtBack = fetch("broughtBack");
        TestProgram test;
        const Definition &definition = *definitionOf(caseName());
        const auto table = [&] {
            return test.rows(fetch("columns"), definition.database);
        };
        DefinitionWindow window(test.program, definition);
        window.show();
        const auto *list = window.findChild<QGroupBox *>(u"fr1"_s);
        const auto *form = window.findChild<QWidget *>(u"fr2"_s);
        QCOMPARE(list->title(), fetch("listCaption"));
        QCOMPARE(headingsOf(window), fetch("headings"));
        QCOMPARE(window.minimumSize(), window.maximumSize());
        QVERIFY(list->isVisible() && !form->isVisible());

        press(window, u"chameleonButton1"_s);
        QVERIFY(!list->isVisible() && form->isVisible());
        QStringList seen;
        for (int i = 1; i <= broughtBack.count(u'|') + 1; ++i) {
            QLineEdit *edit = text(window, u"Text%1"_s.arg(i));
            seen << (edit->isVisible() ? edit->accessibleName() : QString());
            edit->setText(QString::number(i));
        }
        QCOMPARE(seen.join(u'|'), fetch("labels"));
        press(window, u"chameleonButton7"_s);
        QCOMPARE(table(), fetch("inserted"));
        QVERIFY(list->isVisible() && !form->isVisible());
        QVERIFY(text(window, u"Text1"_s)->text().isEmpty());

        auto *view = window.findChild<QTableView *>(u"l1"_s);
        view->selectRow(0);
        press(window, u"chameleonButton2"_s);
        QStringList back;
        for (int i = 1; i <= seen.size(); ++i)
            back << text(window, u"Text%1"_s.arg(i))->text();
        QCOMPARE(back.join(u'|'), broughtBack);
        text(window, u"Text1"_s)->setText(u"X"_s);
        press(window, u"chameleonButton7"_s);
        QCOMPARE(table(), fetch("changed"));

        view->selectRow(0);
        for (const bool yes : {false, true}) {
            test.boxes.expectQuestion(deleteQuestion, yes);
            press(window, u"chameleonButton3"_s);
            QCOMPARE(view->model()->rowCount(), yes ? 0 : 1);
        }
        QCOMPARE(table(), QString());
    }

    void withoutASelectedRowNothingChanges()
    {
        TestProgram test;
        test.fill({u"insert into per values (Null ,'A','B')"_s});
        DefinitionWindow window(test.program, *definitionOf(u"per"_s));
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        auto *view = window.findChild<QTableView *>(u"l1"_s);
        view->clearSelection();
        for (const QString &rests : {u"chameleonButton2"_s, u"chameleonButton3"_s})
            press(window, rests);
        QVERIFY(!text(window, u"Text1"_s)->isVisible());
        // The procedures do not rely on that.
        window.screen().degistir(-1);
        QVERIFY(text(window, u"Text1"_s)->isVisible());
        QCOMPARE(text(window, u"Text1"_s)->text(), QString());
        text(window, u"Text1"_s)->setText(u"C"_s);
        window.screen().kaydet(-1);
        test.boxes.expectQuestion(deleteQuestion, true);
        window.screen().sil(-1);
        // Leaving a record drops what was typed, by the button and by Esc.
        for (const bool byKey : {false, true}) {
            press(window, u"chameleonButton1"_s);
            text(window, u"Text2"_s)->setText(u"D"_s);
            if (byKey)
                QTest::keyClick(&window, Qt::Key_Escape);
            else
                press(window, u"chameleonButton4"_s);
            QCOMPARE(text(window, u"Text2"_s)->text(), QString());
            QVERIFY(window.isVisible());
        }
        QCOMPARE(test.rows(u"per id kod per"_s), u"1|A|B"_s);
    }

    void theListOpensOnItsFirstRowAndKeepsItsPlace()
    {
        TestProgram test;
        for (const char *code : {"A", "B", "C"})
            test.fill({u"insert into per values (Null ,'%1','')"_s.arg(QLatin1StringView(code))});
        DefinitionWindow window(test.program, *definitionOf(u"per"_s));
        window.show();
        auto *view = window.findChild<QTableView *>(u"l1"_s);
        const auto selected = [view] {
            QStringList found;
            for (const QModelIndex &index : view->selectionModel()->selectedRows())
                found << index.data().toString();
            return found.join(u',');
        };
        QCOMPARE(selected(), u"A"_s);
        for (const char *left : {"B", "C", ""}) { // the next one has the place
            test.boxes.expectQuestion(deleteQuestion, true);
            press(window, u"chameleonButton3"_s);
            QCOMPARE(selected(), QString::fromUtf8(left));
        }
        QVERIFY(!window.findChild<QAbstractButton *>(u"chameleonButton3"_s)->isEnabled());
        for (const char *added : {"D", "E"}) {
            press(window, u"chameleonButton1"_s);
            text(window, u"Text1"_s)->setText(QString::fromUtf8(added));
            press(window, u"chameleonButton7"_s);
            QCOMPARE(selected(), QString::fromUtf8(added));
        }
    }

    void aListThatCannotBeReadDoesNotLookEmpty()
    {
        TestProgram test;
        const Definition &definition = *definitionOf(u"per"_s);
        const auto look = [&] {
            DefinitionWindow window(test.program, definition);
            return window.findChild<GridView *>(u"l1"_s)->emptyText();
        };
        QCOMPARE(look(), u"Kayıt yok. \"Yeni\" ile ekleyin."_s);
        writeBytes(test.path(u"data.dbs"_s), QByteArray(4096, 'x'));
        QVERIFY2(look().startsWith(u"Kayıtlar okunamadı: "), qPrintable(look()));
        QVERIFY2(look().contains(u"data.dbs"), qPrintable(look()));
        QVERIFY2(!look().contains(u"select"), qPrintable(look()));
    }

    void anApostropheLosesTheRecordSilently()
    {
        TestProgram test;
        DefinitionScreen screen(test.program, *definitionOf(u"birimseti"_s));
        screen.yukle();
        screen.yeni();
        screen.text(0).setText(u"O'NEIL"_s);
        screen.kaydet(-1);
        QCOMPARE(screen.l1.rows(), 0);
        screen.yeni();
        screen.kaydet(-1); // all fields empty is a record
        QCOMPARE(test.rows(u"birim id frno frkod firma kaskod dkod crkod alkod satkod"_s),
                 u"1||||||||"_s);
        screen.degistir(0);
        screen.text(0).setText(u"x', dkod = 'y"_s);
        screen.kaydet(0);
        QCOMPARE(test.rows(u"birim id frno frkod firma kaskod dkod crkod alkod satkod"_s),
                 u"1||||||||"_s);
    }

    void aDefaultStatusIsTickedAndListed()
    {
        TestProgram test;
        test.fill({u"insert into statu values (Null ,'eski','')"_s});
        DefinitionWindow window(test.program, *definitionOf(u"ststatu"_s));
        window.show();
        auto *isDefault = window.findChild<QCheckBox *>(u"c1"_s);
        for (const QString &status : {u"a"_s, u"b"_s}) { // two defaults stand side by side
            press(window, u"chameleonButton1"_s);
            QVERIFY(!isDefault->isChecked());
            text(window, u"Text1"_s)->setText(status);
            isDefault->setChecked(true);
            press(window, u"chameleonButton7"_s);
        }
        QCOMPARE(test.rows(u"statu id statu var"_s), u"1|eski|/2|a|1/3|b|1"_s);
        QCOMPARE(window.screen().l1.cell(0, 1), QString());
        QCOMPARE(window.screen().l1.cell(2, 1), u"Varsayılan"_s);
        window.findChild<QTableView *>(u"l1"_s)->selectRow(1);
        press(window, u"chameleonButton2"_s);
        QVERIFY(isDefault->isChecked());
    }

    void theGeneralVatRateIsWrittenAtEachKeystroke()
    {
        TestProgram test;
        DefinitionWindow window(test.program, *definitionOf(u"muhkod"_s));
        window.show();
        QLineEdit *rate = text(window, u"genkdv"_s);
        QCOMPARE(rate->text(), u"18"_s);
        rate->selectAll();
        QTest::keyClicks(rate, u"2"_s);
        QCOMPARE(test.rows(u"kdv id kdv"_s), u"1|2"_s);
        QTest::keyClicks(rate, u"0"_s);
        QCOMPARE(test.rows(u"kdv id kdv"_s), u"1|20"_s);
        QVERIFY(QFile::remove(test.path(u"data.dbs"_s)));
        DefinitionWindow withoutTable(test.program, *definitionOf(u"muhkod"_s));
        QCOMPARE(text(withoutTable, u"genkdv"_s)->text(), u"18"_s);
    }

    void closingTellsTheInvoiceScreen_data()
    {
        addTable(uR"(
case                         ; screen    ; by     ; told
firms, by Esc                ; fir       ; Esc    ; yes
firms, by the button         ; fir       ; button ; yes
payment plans, by Esc        ; odmplan   ; Esc    ; no
payment plans, by the button ; odmplan   ; button ; yes
unit sets                    ; birimseti ; Esc    ; yes
personnel                    ; per       ; Esc    ; yes
special codes of invoices    ; ozkod     ; Esc    ; yes
ledger codes                 ; muhkod    ; button ; no
stock statuses               ; ststatu   ; button ; no
special codes of stock       ; stokozkod ; button ; no)"_s);
    }
    void closingTellsTheInvoiceScreen()
    {
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"fat"_s);
        window.open(fetch("screen"));
        auto *definition = window.findChild<DefinitionWindow *>();
        test.fill({u"insert into firma values (Null ,'','','YENİ','','','','','')"_s});
        if (fetch("by") == u"button")
            press(*definition, u"chameleonButton8"_s);
        else
            QTest::keyClick(definition, Qt::Key_Escape);
        const auto *firms = window.findChild<FatWindow *>()->findChild<QComboBox *>(u"c3"_s);
        QCOMPARE(firms->findText(u"YENİ"_s) >= 0, fetch("told") == u"yes");
    }

    void aValueIsWrittenWholeAndReadToItsCommaAndReachesTheTravelScreen_data()
    {
        // The bank and the cash code that the travel screen shows then.
        addTable(uR"(
case      ; label           ; file       ; bank ; cash
bankakodu ; Bankahesapkodu: ; bank.kvz   ; ŞB,1 ; eski
brmset    ; Birimsetikodu:  ; brmset.kvz ; eski ; eski
kskod     ; Kasa Kodu:      ; kasa.kvz   ; eski ; ŞB,1)"_s);
    }
    void aValueIsWrittenWholeAndReadToItsCommaAndReachesTheTravelScreen()
    {
        const QString screen = caseName();
        TestProgram test;
        for (const QString &code : {u"bank.kvz"_s, u"kasa.kvz"_s})
            writeBytes(test.path(code), "eski\r\n");
        MainWindow window(test.program);
        window.show();
        window.open(u"cafis2"_s);
        QVERIFY(QFile::remove(test.path(u"bank.kvz"_s)) && QFile::remove(test.path(u"kasa.kvz"_s)));
        window.open(screen);
        auto *dialog = window.findChild<ValueWindow *>(screen);
        auto *edit = text(*dialog, u"bankahesapno1"_s);
        QCOMPARE(edit->accessibleName(), fetch("label"));
        QCOMPARE(edit->text(), QString());
        edit->setText(u"ŞB,1"_s);
        press(*dialog, u"chameleonButton5"_s);
        QCOMPARE(readBytes(test.path(fetch("file"))), toCodePage(u"ŞB,1\r\n"));
        QTRY_VERIFY(!window.findChild<ValueWindow *>(screen));
        window.open(screen);
        dialog = window.findChild<ValueWindow *>(screen);
        QCOMPARE(text(*dialog, u"bankahesapno1"_s)->text(), u"ŞB"_s);
        auto *travel = window.findChild<SlipWindow *>();
        QCOMPARE(text(*travel, u"bankahesapno1"_s)->text(), fetch("bank"));
        QCOMPARE(travel->findChild<QLabel *>(u"kskod"_s)->text(), fetch("cash"));
    }

    void theStockScreenIsToldAndMadeUnseen()
    {
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"cr"_s);
        const QWidget *before = window.focusWidget();
        window.open(u"brmset"_s);
        text(*window.findChild<ValueWindow *>(), u"bankahesapno1"_s)->setText(u"05"_s);
        press(*window.findChild<ValueWindow *>(), u"chameleonButton5"_s);
        auto *stock = window.findChild<StoktrfWindow *>();
        QVERIFY(stock && !stock->isVisible());
        QCOMPARE(stock->stoktrf().brmseti.text(), u"05"_s);
        QCOMPARE(window.focusWidget(), before);
        window.open(u"st"_s); // made after it, and shown before it
        window.open(u"stoktrf"_s);
        QVERIFY(stock->isVisible());
        QCOMPARE(window.findChildren<StoktrfWindow *>().size(), 1);
        QCOMPARE(window.focusWidget()->objectName(), u"chameleonButton5"_s); // where work starts
        QVERIFY(stock->isAncestorOf(window.focusWidget()));
        stock->stoktrf().dosyaac(test.path(u"yok.txt"_s)); // its note is there behind it all

        stock->stoktrf().brmseti.setText(u"06"_s); // typed, and not read again
        window.open(u"stokozkod"_s);
        test.fill({u"insert into ozkod values (Null ,'ACIK','KOD')"_s}, u"stokozkod.dbs"_s);
        QTest::keyClick(window.findChild<DefinitionWindow *>(), Qt::Key_Escape);
        QCOMPARE(stock->stoktrf().ozelKodlar[4].entries(),
                 (QStringList{QString(), u"KOD- ACIK"_s}));
        QCOMPARE(stock->stoktrf().brmseti.text(), u"06"_s);
        QVERIFY(stock->stoktrf().bilgi.text().contains(u"yok.txt"));
    }

    void theExemptionTextsReachTheOpenInvoiceScreen()
    {
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"fat"_s);
        window.open(u"kdvmu"_s);
        auto *dialog = window.findChild<KdvmuWindow *>();
        QVERIFY(!dialog->isModal());
        text(*dialog, u"Text1"_s)->setText(u"genel, yazı"_s);
        text(*dialog, u"Text2"_s)->setText(u"satır"_s);
        const Fat &fat = window.findChild<FatWindow *>()->fat();
        press(*dialog, u"chameleonButton5"_s);
        QCOMPARE(fat.tanimlar.kdvmuafiyetgenel, u"genel, yazı"_s);
        QCOMPARE(fat.tanimlar.kdvmuafiyetsatir, u"satır"_s);
        QCOMPARE(readBytes(test.path(u"kdvmu.kvz"_s)),
                 QByteArray("genel, yaz\xFD\r\nsat\xFDr\r\n"));
        QTRY_VERIFY(!window.findChild<KdvmuWindow *>());
        window.open(u"kdvmu");
        dialog = window.findChild<KdvmuWindow *>();
        QCOMPARE(text(*dialog, u"Text1"_s)->text(), u"genel, yazı"_s);
        QCOMPARE(text(*dialog, u"Text2"_s)->text(), u"satır"_s);
    }

    void theFileSettingsAreWrittenAndTakenOver()
    {
        TestProgram test;
        AyrWindow window(test.program);
        window.show();
        text(window, u"Text1"_s)->setText(u"/k/cari.txt"_s);
        // The dialogs start in the field's value, else in the program folder's place for its kind.
        test.dialogs.answers << std::nullopt << u"/s/stok.txt"_s << u"/h/fatura.xml"_s;
        press(window, u"chameleonButton1"_s);
        press(window, u"chameleonButton2"_s);
        QCOMPARE(test.dialogs.any, 0);
        press(window, u"chameleonButton6"_s);
        QCOMPARE(test.dialogs.any, 1); // a target need not be there yet
        QCOMPARE(test.dialogs.saves, 0);
        QCOMPARE(test.dialogs.asked[0].start, u"/k/cari.txt"_s);
        QCOMPARE(test.dialogs.asked[1].start, test.path(u"txt"_s));
        QCOMPARE(test.dialogs.asked[1].filter, u"txt Dosyaları (txt)|*.txt"_s);
        QCOMPARE(test.dialogs.asked[2].start, test.path(u"logo xml"_s));
        QCOMPARE(test.dialogs.asked[2].filter, u"Exel Dosyaları (xml)|*.xml"_s);
        QCOMPARE(text(window, u"Text4"_s)->text(), u"/h/fatura.xml"_s);
        text(window, u"Text6"_s)->setText(u"it's"_s); // breaks the statement
        press(window, u"chameleonButton7"_s);
        QCOMPARE(test.rows(u"yol id ec es ef xc xs xf"_s), u"1||||||"_s);
        QCOMPARE(test.program.folders.ec, u"/k/cari.txt"_s); // taken over all the same
        QCOMPARE(test.program.folders.xc, u"it's"_s);

        AyrWindow again(test.program);
        text(again, u"Text2"_s)->setText(u"C:\\Ş & ;--"_s);
        text(again, u"Text5"_s)->setText(u"x"_s);
        press(again, u"chameleonButton7"_s);
        QCOMPARE(test.rows(u"yol id ec es ef xc xs xf"_s), u"1||C:\\Ş & ;--|||x|"_s);
    }

    void theListOfLogoPersonnelStandsByItself()
    {
        LogoperWindow window;
        QCOMPARE(window.windowTitle(), u"Logo Personel Listesi"_s);
        QCOMPARE(headingsOf(window), u"Personel Kodu|Personel Adı"_s);
        window.show();
        press(window, u"chameleonButton8"_s);
        QVERIFY(!window.isVisible());
    }
};

QTEST_MAIN(DefinitionsTest)
#include "tst_definitions.moc"
