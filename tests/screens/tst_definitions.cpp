// Every definition screen and settings dialog in its real window: what is typed, and the rows and
// files that come of it.

#include "cards/screens/stoktrfwindow.h"
#include "frame/mainwindow.h"
#include "invoices/screens/fatwindow.h"
#include "store/screens/definitionwindow.h"
#include "store/screens/logoperwindow.h"
#include "store/screens/settingswindows.h"
#include "support/fakes.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTableView>
#include <QTest>
#include <QToolButton>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const Box deleteQuestion{u"Kaydi Silmek İstediğinize Eminmisiniz ?"_s, u"DİKKAT"_s, Icon::Question};

// The table as the file has it, columns in the table's own order.
QStringList tableOf(const QString &path, const QString &table)
{
    QStringList rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"check"_s);
        db.setDatabaseName(path);
        db.open();
        QSqlQuery query(u"select * from "_s + table, db);
        while (query.next()) {
            QStringList cells;
            for (int i = 0; query.value(i).isValid(); ++i)
                cells << query.value(i).toString();
            rows << cells.join(u'|');
        }
    }
    QSqlDatabase::removeDatabase(u"check"_s);
    return rows;
}

void click(QWidget *window, const char *name)
{
    QTest::mouseClick(window->findChild<QAbstractButton *>(QString::fromUtf8(name)),
                      Qt::LeftButton);
}

QLineEdit *text(QWidget *window, const QString &name)
{
    return window->findChild<QLineEdit *>(name);
}

QString headings(QWidget *window)
{
    const auto *view = window->findChild<QTableView *>(u"l1"_s);
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
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("labels");
        QTest::addColumn<QString>("columns");
        QTest::addColumn<QString>("inserted"); // after 1, 2, 3 ... in the fields
        QTest::addColumn<QString>("shown");    // what "Değiştir" brings back into the fields
        QTest::addColumn<QString>("changed");  // after X in the first field
        const auto row = [](const char *screen, const char *caption, const char *list,
                            const char *labels, const char *columns, const char *inserted,
                            const char *shown, const char *changed) {
            QTest::newRow(screen) << QString::fromUtf8(caption) << QString::fromUtf8(list)
                                  << QString::fromUtf8(labels) << QString::fromUtf8(columns)
                                  << QString::fromUtf8(inserted) << QString::fromUtf8(shown)
                                  << QString::fromUtf8(changed);
        };
        row("fir", "Firma Tanımlaması", "Firma Listesi",
            "Firma No|Firma Kodu|Firma adı|Kasa Kodu|Depo Kodu|Cari Kodu|Satıcı Hesap Kodu|"
            "Alıcı Hesap Kodu",
            "Firma No|Firma Kodu|Firma Adı|Kasa Kodu|Depo Kodu|Satıcı Hesap Kodu|Alıcı Hesap Kodu",
            "1|1|2|3|4|5|6|8|7", "1|2|3|4|5||7|8", "1|X|2|3|4|5||8|7");
        row("muhkod", "Muhasebe Kodları Tanımı", "Muhasebe Kodları  Listesi",
            "Kdv Oranı|Alış|Satış|Alış İade|Satış İade|Alış Kdv|Satış Kdv|Alış İade Kdv|"
            "Satış İade Kdv|İndirimler Muhasebe Kodu",
            "Kdv|Alış|Satış|Alış İade|Satış İade|Alış Kdv|Satış Kdv|Alış İade Kdv|Satış İade Kdv|"
            "İndirimler Muhasebe Kodu",
            "1|10|1|2|3|4|5|6|7|8|9", "1|2|3|4|5|6|7|8|9|10", "1|10|X|2|3|4|5|6|7|8|9");
        row("odmplan", "Ödeme Plan Kodu Tanımı", "Ödeme Planı  Listesi",
            "Ödeme Plan Kodu:|Açıklama:||||||", "Ödeme Plan Kodu|Açıklama", "1|1|2|3|4|5|6|8|7",
            "1|2||||||", "1|X|2||||||");
        row("birimseti", "Birim Setleri", "Birim Seti Listesi",
            "Birim Seti Kodu:|Açıklama:|Tex Birim Kodu:|Logo Birim Kodu:",
            "Birim Seti kodu|Açıklama|Logo Birim Kodu|SAP Birim Kodu", "1|1|2|4|3||||", "1|2|3|4",
            "1|X|2|4|3||||");
        row("ststatu", "Stok Kartı Statü Kayıtları", "Stok Statu  Listesi", "Statu:", "Statu|Durum",
            "1|1|0", "1", "1|X|0");
        row("per", "Personel Kayıt", "Personel Listesi",
            "Logo Personel Kodu:|Sap Personel Kodu:", "Logo Personel Kodu|Sap Personel Kodu",
            "1|1|2", "1|2", "1|X|2");
        row("ozkod", "Form1", "Fatura Özel Kod Listesi", "Fatura Özel Kodu:", "Fatura Özel kodu",
            "1|1", "1", "1|X");
        row("stokozkod", "Stok Özel Kodları", "Stok Özel Kod Listesi",
            "Özel Kod:|Açıklama:", "Özel Kod|Açıklama", "1|2|1", "1|2", "1|2|X");
    }
    void aRecordIsMadeChangedAndDeleted()
    {
        QFETCH(QString, inserted);
        QFETCH(QString, shown);
        QFETCH(QString, changed);
        QFETCH(QString, labels);
        TestProgram test;
        const Definition &definition = *definitionOf(QString::fromUtf8(QTest::currentDataTag()));
        const QString path = test.path(definition.database);
        DefinitionWindow window(test.program, definition);
        window.show();
        QTEST(window.windowTitle(), "caption");
        QTEST(window.findChild<QGroupBox *>(u"fr1"_s)->title(), "list");
        QTEST(headings(&window), "columns");
        QCOMPARE(window.minimumSize(), window.maximumSize());
        const auto *list = window.findChild<QWidget *>(u"fr1"_s);
        const auto *record = window.findChild<QWidget *>(u"fr2"_s);
        QVERIFY(list->isVisible() && !record->isVisible());

        click(&window, "chameleonButton1");
        QVERIFY(!list->isVisible() && record->isVisible());
        const qsizetype fields = shown.count(u'|') + 1;
        QStringList seen;
        for (qsizetype i = 1; i <= fields; ++i) {
            QLineEdit *edit = text(&window, u"Text%1"_s.arg(i));
            seen << (edit->isVisible() ? edit->accessibleName() : QString());
            edit->setText(QString::number(i));
        }
        QCOMPARE(seen.join(u'|'), labels);
        click(&window, "chameleonButton7");
        QCOMPARE(tableOf(path, definition.table), QStringList{inserted});
        QVERIFY(list->isVisible() && !record->isVisible());
        QVERIFY(text(&window, u"Text1"_s)->text().isEmpty());

        auto *view = window.findChild<QTableView *>(u"l1"_s);
        view->selectRow(0);
        click(&window, "chameleonButton2");
        QStringList back;
        for (qsizetype i = 1; i <= fields; ++i)
            back << text(&window, u"Text%1"_s.arg(i))->text();
        QCOMPARE(back.join(u'|'), shown);
        text(&window, u"Text1"_s)->setText(u"X"_s);
        click(&window, "chameleonButton7");
        QCOMPARE(tableOf(path, definition.table), QStringList{changed});

        view->selectRow(0);
        test.boxes.expectQuestion(deleteQuestion, false);
        click(&window, "chameleonButton3");
        QCOMPARE(view->model()->rowCount(), 1);
        test.boxes.expectQuestion(deleteQuestion, true);
        click(&window, "chameleonButton3");
        QCOMPARE(tableOf(path, definition.table), QStringList());
        QCOMPARE(view->model()->rowCount(), 0);
    }

    void withoutASelectedRowNothingChanges()
    {
        TestProgram test;
        test.fill({u"insert into per values (Null ,'A','B')"_s});
        DefinitionWindow window(test.program, *definitionOf(u"per"_s));
        window.show();
        click(&window, "chameleonButton2");
        QVERIFY(text(&window, u"Text1"_s)->isVisible());
        QCOMPARE(text(&window, u"Text1"_s)->text(), QString());
        text(&window, u"Text1"_s)->setText(u"C"_s);
        click(&window, "chameleonButton7");
        test.boxes.expectQuestion(deleteQuestion, true);
        click(&window, "chameleonButton3");
        // Leaving a record drops what was typed, by the button and by Esc.
        for (const bool byKey : {false, true}) {
            click(&window, "chameleonButton1");
            text(&window, u"Text2"_s)->setText(u"D"_s);
            if (byKey)
                QTest::keyClick(&window, Qt::Key_Escape);
            else
                click(&window, "chameleonButton4");
            QCOMPARE(text(&window, u"Text2"_s)->text(), QString());
            QVERIFY(window.isVisible());
        }
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"per"_s), QStringList{u"1|A|B"_s});
    }

    void anApostropheLosesTheRecordSilently()
    {
        TestProgram test;
        DefinitionScreen screen(test.program, *definitionOf(u"birimseti"_s));
        screen.yukle();
        screen.yeni();
        screen.field(0).setText(u"O'NEIL"_s);
        screen.kaydet(-1);
        QCOMPARE(screen.l1.rows(), 0);
        screen.yeni();
        screen.kaydet(-1); // all fields empty is a record
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"birim"_s), QStringList{u"1||||||||"_s});
        screen.degistir(0);
        screen.field(0).setText(u"x', dkod = 'y"_s);
        screen.kaydet(0);
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"birim"_s), QStringList{u"1||||||||"_s});
    }

    void aDefaultStatusIsTickedAndListed()
    {
        TestProgram test;
        DefinitionWindow window(test.program, *definitionOf(u"ststatu"_s));
        window.show();
        for (const char *name : {"a", "b"}) { // two defaults stand side by side
            click(&window, "chameleonButton1");
            text(&window, u"Text1"_s)->setText(QString::fromUtf8(name));
            window.findChild<QCheckBox *>(u"c1"_s)->setChecked(true);
            click(&window, "chameleonButton7");
        }
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"statu"_s),
                 (QStringList{u"1|a|1"_s, u"2|b|1"_s}));
        QCOMPARE(window.screen().l1.cell(1, 1), u"Varsayılan"_s);
        window.findChild<QTableView *>(u"l1"_s)->selectRow(0);
        click(&window, "chameleonButton2");
        QVERIFY(window.findChild<QCheckBox *>(u"c1"_s)->isChecked());
    }

    void theGeneralVatRateIsWrittenAtEachKeystroke()
    {
        TestProgram test;
        DefinitionWindow window(test.program, *definitionOf(u"muhkod"_s));
        window.show();
        QLineEdit *rate = text(&window, u"genkdv"_s);
        QCOMPARE(rate->text(), u"18"_s);
        rate->selectAll();
        QTest::keyClicks(rate, u"2"_s);
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"kdv"_s), QStringList{u"1|2"_s});
        QTest::keyClicks(rate, u"0"_s);
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"kdv"_s), QStringList{u"1|20"_s});
    }

    void closingTellsTheInvoiceScreen_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("insert");
        QTest::addColumn<QString>("list");
        QTest::addColumn<bool>("byKey"); // closed by Esc, not by its button
        QTest::addColumn<bool>("told");
        const QString firm = u"insert into firma values (Null ,'','','YENİ','','','','','')"_s;
        const QString plan = u"insert into odm values (Null ,'YENİ','','','','','','','')"_s;
        QTest::newRow("firms by Esc") << u"firtanım"_s << firm << u"c3"_s << true << true;
        QTest::newRow("firms by button") << u"firtanım"_s << firm << u"c3"_s << false << true;
        QTest::newRow("plans by Esc") << u"odmpl"_s << plan << u"c5"_s << true << false;
        QTest::newRow("plans by button") << u"odmpl"_s << plan << u"c5"_s << false << true;
    }
    void closingTellsTheInvoiceScreen()
    {
        QFETCH(QString, entry);
        QFETCH(QString, insert);
        QFETCH(QString, list);
        QFETCH(bool, byKey);
        QFETCH(bool, told);
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"fat"_s);
        window.findChild<QAction *>(entry)->trigger();
        auto *definition = window.findChild<DefinitionWindow *>();
        test.fill({insert});
        if (byKey)
            QTest::keyClick(definition, Qt::Key_Escape);
        else
            click(definition, "chameleonButton8");
        const auto *box = window.findChild<FatWindow *>()->findChild<QComboBox *>(list);
        QCOMPARE(box->findText(u"YENİ"_s, Qt::MatchStartsWith) >= 0, told);
    }

    void aValueIsWrittenWholeAndReadToItsComma_data()
    {
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("file");
        QTest::newRow("bankakodu")
            << u"Banka Hesap Kodu"_s << u"Bankahesapkodu:"_s << u"bank.kvz"_s;
        QTest::newRow("brmset") << u"Stok Birim Seti Kodu"_s << u"Birimsetikodu:"_s
                                << u"brmset.kvz"_s;
        QTest::newRow("kskod") << u"Kasa "_s << u"Kasa Kodu:"_s << u"kasa.kvz"_s;
    }
    void aValueIsWrittenWholeAndReadToItsComma()
    {
        QFETCH(QString, file);
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        const QString screen = QString::fromUtf8(QTest::currentDataTag());
        window.open(screen);
        auto *dialog = window.findChild<ValueWindow *>(screen);
        QTEST(dialog->windowTitle(), "caption");
        QTEST(text(dialog, u"bankahesapno1"_s)->accessibleName(), "label");
        QCOMPARE(text(dialog, u"bankahesapno1"_s)->text(), QString());
        text(dialog, u"bankahesapno1"_s)->setText(u"ŞB,1"_s);
        click(dialog, "chameleonButton5");
        QCOMPARE(readBytes(test.path(file)), QByteArray("\xDE"
                                                        "B,1\r\n"));
        QTRY_VERIFY(!window.findChild<ValueWindow *>(screen));
        window.open(screen);
        QCOMPARE(text(window.findChild<ValueWindow *>(screen), u"bankahesapno1"_s)->text(),
                 u"ŞB"_s);
    }

    void theStockScreenIsToldAndMadeUnseen()
    {
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"cr"_s);
        const QWidget *before = window.focusWidget();
        window.open(u"brmset"_s);
        text(window.findChild<ValueWindow *>(), u"bankahesapno1"_s)->setText(u"05"_s);
        click(window.findChild<ValueWindow *>(), "chameleonButton5");
        auto *stock = window.findChild<StoktrfWindow *>();
        QVERIFY(stock && !stock->isVisible());
        QCOMPARE(stock->stoktrf().brmseti.text(), u"05"_s);
        QCOMPARE(window.focusWidget(), before);
        window.open(u"stoktrf"_s);
        QVERIFY(stock->isVisible());
        QCOMPARE(window.findChildren<StoktrfWindow *>().size(), 1);

        window.open(u"stokozkod"_s);
        test.fill({u"insert into ozkod values (Null ,'ACIK','KOD')"_s}, u"stokozkod.dbs"_s);
        QTest::keyClick(window.findChild<DefinitionWindow *>(), Qt::Key_Escape);
        QCOMPARE(stock->stoktrf().c[4].entries(), (QStringList{QString(), u"KOD- ACIK"_s}));
    }

    void theExemptionTextsReachTheOpenInvoiceScreen()
    {
        TestProgram test;
        MainWindow window(test.program);
        window.show();
        window.open(u"fat"_s);
        window.open(u"kdvmu"_s);
        auto *dialog = window.findChild<KdvmuWindow *>();
        QCOMPARE(dialog->windowTitle(), u"KVZ"_s);
        QVERIFY(!dialog->isModal());
        text(dialog, u"Text1"_s)->setText(u"genel, yazı"_s);
        text(dialog, u"Text2"_s)->setText(u"satır"_s);
        const Fat &fat = window.findChild<FatWindow *>()->fat();
        click(dialog, "chameleonButton5");
        QCOMPARE(fat.kdvmuafiyetgenel, u"genel, yazı"_s);
        QCOMPARE(fat.kdvmuafiyetsatir, u"satır"_s);
        QCOMPARE(readBytes(test.path(u"kdvmu.kvz"_s)),
                 QByteArray("genel, yaz\xFD\r\nsat\xFDr\r\n"));
    }

    void theFileSettingsAreWrittenAndTakenOver()
    {
        TestProgram test;
        AyrWindow window(test.program);
        window.show();
        text(&window, u"Text1"_s)->setText(u"/k/cari.txt"_s);
        // The dialogs start in the field's value, else in the program folder's place for its kind.
        test.dialogs.answers << std::nullopt << u"/s/stok.txt"_s << u"/h/fatura.xml"_s;
        click(&window, "chameleonButton1");
        click(&window, "chameleonButton2");
        click(&window, "chameleonButton6");
        QCOMPARE(test.dialogs.asked[0].start, u"/k/cari.txt"_s);
        QCOMPARE(test.dialogs.asked[1].start, test.path(u"txt"_s));
        QCOMPARE(test.dialogs.asked[1].filter, u"txt Dosyaları (txt)|*.txt"_s);
        QCOMPARE(test.dialogs.asked[2].start, test.path(u"logo xml"_s));
        QCOMPARE(test.dialogs.asked[2].filter, u"Exel Dosyaları (xml)|*.xml"_s);
        QCOMPARE(text(&window, u"Text4"_s)->text(), u"/h/fatura.xml"_s);
        text(&window, u"Text6"_s)->setText(u"it's"_s); // breaks the statement
        click(&window, "chameleonButton7");
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"yol"_s), QStringList{u"1||||||"_s});
        QCOMPARE(test.program.folders.ec, u"/k/cari.txt"_s); // taken over all the same
        QCOMPARE(test.program.folders.xc, u"it's"_s);

        AyrWindow again(test.program);
        text(&again, u"Text2"_s)->setText(u"s"_s);
        text(&again, u"Text5"_s)->setText(u"x"_s);
        click(&again, "chameleonButton7");
        QCOMPARE(tableOf(test.path(u"data.dbs"_s), u"yol"_s), QStringList{u"1||s|||x|"_s});
    }

    void theListOfLogoPersonnelStandsByItself()
    {
        LogoperWindow window;
        QCOMPARE(window.windowTitle(), u"Logo Personel Listesi"_s);
        QCOMPARE(headings(&window), u"Personel Kodu|Personel Adı"_s);
        window.show();
        click(&window, "chameleonButton8");
        QVERIFY(!window.isVisible());
    }
};

QTEST_MAIN(DefinitionsTest)
#include "tst_definitions.moc"
