#include "cards/screens/crwindow.h"
#include "frame/mainwindow.h"
#include "invoices/columns.h"
#include "invoices/screens/fatwindow.h"
#include "odbc/odbcserver.h"
#include "stocktake/screens/sayimwindow.h"
#include "support/fakes.h"
#include "support/ruler.h"
#include "support/tds/tdsstandin.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>

using namespace kervan;

namespace {

// Keeps what was shown: "title/icon: text".
class KeptBoxes : public Boxes
{
public:
    QStringList shown;
    void show(const Box &box) override
    {
        shown << u"%1/%2: %3"_s.arg(box.title).arg(int(box.icon)).arg(box.text);
    }
    bool ask(const Box &) override { return false; }
    QStringList taken() { return std::exchange(shown, {}); }
};

/// The program's windows, with the machine's real driver between them and the stand-in.
class Desk
{
public:
    TestProgram t;
    KeptBoxes boxes;
    OdbcServer server;
    TdsStandin logo;
    Program program{t.folder.path(), {}, {}, {}, boxes, t.dialogs, t.clock, server};
    MainWindow window{program};

    Desk()
    {
        fillLogo(logo, 12);
        window.show();
    }
    template<class Widget>
    Widget *find(const char *screen, const char *name)
    {
        auto *found = window.findChild<QWidget *>(QString::fromUtf8(screen))
                          ->findChild<Widget *>(QString::fromUtf8(name));
        Q_ASSERT(found);
        return found;
    }
    void click(const char *screen, const char *name)
    {
        QTest::mouseClick(find<QAbstractButton>(screen, name), Qt::LeftButton);
    }
    void saveSettings(const QString &password = TdsStandin::password.toString())
    {
        const QByteArray end = "\r\n";
        writeBytes(t.path(u"sqlbaglan.kvz"_s), logo.server().toLatin1() + end + "sa" + end +
                                                   toCodePage(password) + end + "LOGODB" + end +
                                                   "12- A" + end);
    }
    void typeSettings(const QString &password, const QString &database)
    {
        const auto type = [this](const char *name, const QString &text) {
            find<QLineEdit>("sqlbaglanti", name)->setText(text);
        };
        type("Text1", logo.server());
        type("Text3", password);
        type("Text4", database);
        click("sqlbaglanti", "chameleonButton1");
    }
};

} // namespace

class TestLogo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSettingsAreTestedSavedAndReachTheOpenInvoiceScreen()
    {
        Desk desk;
        const auto label9 = [&] {
            return desk.find<QLabel>("fat", "Label9")->text();
        };
        desk.window.open(u"fat"_s);
        QCOMPARE(label9(), u"SQL Bağlantı Yok"_s);
        desk.window.open(u"sqlbaglanti"_s);
        QVERIFY(desk.find<QWidget>("sqlbaglanti", "fr1")->isHidden());
        desk.click("sqlbaglanti", "guncellemeyegec");
        QVERIFY(desk.find<QWidget>("sqlbaglanti", "fr1")->isVisible());

        auto *server = desk.find<QLineEdit>("sqlbaglanti", "Text1");
        server->insert(u"S\nR\r\nV"_s); // as a paste brings it
        QCOMPARE(server->text(), u"SRV"_s);
        auto *password = desk.find<QLineEdit>("sqlbaglanti", "Text3");
        QCOMPARE(password->echoMode(), QLineEdit::Password);
        QTest::mouseClick(desk.find<QAbstractButton>("sqlbaglanti", "Check1"), Qt::LeftButton, {},
                          QPoint(8, 8));
        QCOMPARE(password->echoMode(), QLineEdit::Normal);
        auto *test = desk.find<QAbstractButton>("sqlbaglanti", "chameleonButton1");
        desk.find<QLineEdit>("sqlbaglanti", "Text4")->clear();
        QTest::keyClick(test, Qt::Key_Return); // presses what has the focus, and not "Kaydet"
        QCOMPARE(desk.boxes.taken(), QStringList{u"Dikkat/0: Bağlantı Sağlanamadı..."_s});

        const auto failed = u"Dikkat/0: Bağlantı Sağlanamadı..."_s;
        desk.typeSettings(u"yanlış"_s, u"LOGODB"_s);
        QStringList shown = desk.boxes.taken();
        QCOMPARE(shown.size(), 2);
        QVERIFY2(shown[0].startsWith(u"/0: Login failed for user 'sa'."_s), qPrintable(shown[0]));
        QCOMPARE(shown[1], failed);
        desk.typeSettings(TdsStandin::password.toString(), u"YOK"_s);
        shown = desk.boxes.taken();
        QVERIFY2(shown.value(0).contains(u"YOK"_s), qPrintable(shown.value(0)));
        QCOMPARE(shown.value(1), failed);
        QVERIFY(!desk.find<QWidget>("sqlbaglanti", "chameleonButton2")->isEnabled());

        desk.typeSettings(TdsStandin::password.toString(), u"LOGODB"_s);
        QCOMPARE(desk.boxes.taken(), QStringList{u"Dikkat/0: Bağlantı Sağlandı..."_s});
        const auto *label6 = desk.find<QLabel>("sqlbaglanti", "Label6");
        QCOMPARE(label6->text(), u"SQL Bağlantı Var"_s);
        QVERIFY(label6->styleSheet().contains(u"color: #00ff00"_s));
        QVERIFY(desk.find<QWidget>("sqlbaglanti", "chameleonButton2")->isEnabled());
        desk.click("sqlbaglanti", "chameleonButton3");
        QVERIFY(desk.find<QWidget>("sqlbaglanti", "fr1")->isHidden());
        auto *firm = desk.find<QComboBox>("sqlbaglanti", "c1");
        QCOMPARE(firm->itemText(0), u"12- ÖRNEK GIDA LTD. ŞTİ."_s);
        firm->setEditText(firm->itemText(0));
        desk.click("sqlbaglanti", "chameleonButton7");
        QTRY_VERIFY(!desk.window.findChild<QDialog *>(u"sqlbaglanti"_s));
        QCOMPARE(label9(), u"SQL Bağlantı Var"_s);
    }

    void customersWhoTakeEInvoicesAreMarkedUntilAStatementFails()
    {
        Desk desk;
        desk.saveSettings();
        desk.logo.run(u"insert into LG_012_CLCARD values (1, 'Ç1', 'x', 1), (2, 'C2', 'x', 0), "
                      "(3, 'C4', 'x', 1)"_s);
        QByteArray bif;
        for (const QString &code : {u"Ç1"_s, u"C2"_s, u"C3"_s, u"C4"_s, u"C'5"_s, u"Ç1"_s})
            bif += ruled(u"@5", 5, u"20240307", 28, code, 80, u"F", 96, u"1", 109, u"0", 122, u"0",
                         135, u"1", 148, u"0");
        writeBytes(desk.t.path(u"a.bif"_s), bif);
        desk.window.open(u"fat"_s);
        auto *fat = desk.window.findChild<FatWindow *>();
        fat->fat().dosyaac(desk.t.path(u"a.bif"_s));
        QStringList marks;
        for (int row = 0; row < 6; ++row)
            marks << fat->fat().liste.l1.cell(row, L1::EFatura);
        QCOMPARE(marks.join(u'|'), u"Evet|||Evet||"_s);
        QCOMPARE(desk.boxes.taken(),
                 QStringList{u"Dikkat/3: Bu değer SQL komutunu bozar, komut gönderilmedi: C'5 "
                             "E-Fatura Okunurken Hata Oluştu"_s});
        QCOMPARE(desk.logo.statements().size(), 4);
        QCOMPARE(desk.logo.statements()[0], u"Select * from LG_012_CLCARD where CODE='Ç1'"_s);
        QVERIFY(desk.find<QProgressBar>("fat", "pr1")->isVisible());
    }

    void aStockCountIsReadAndSavedUntilTheLineIsCut()
    {
        Desk desk;
        desk.saveSettings();
        desk.logo.run(u"insert into LG_012_UNITBARCODE values ('869', 1, 2)"_s);
        desk.logo.run(u"insert into LG_012_ITEMS values (1, 'ŞKR', 'x')"_s);
        desk.logo.run(u"insert into LG_012_UNITSETL values (2, 'KOLİ', 'x')"_s);
        writeBytes(desk.t.path(u"s.txt"_s),
                   ruled(u"869", 15, u"1,5") + ruled(u"111", 15, u"2") + ruled(u"869", 15, u"3"));
        QTest::mouseClick(desk.window.findChild<QAbstractButton *>(u"lvButtons_H4"_s),
                          Qt::LeftButton);
        QCOMPARE(desk.find<QLabel>("sayimform", "Label9")->text(), u"SQL Bağlantı Var"_s);
        desk.click("sayimform", "chameleonButton1");
        QCOMPARE(desk.boxes.taken(),
                 QStringList{u"Dikkat/2: Sayım Listesinde Kayıt Bulunamadı...!"_s});
        desk.t.dialogs.answers = {desk.t.path(u"s.txt"_s), desk.t.path(u"s"_s)};
        desk.click("sayimform", "chameleonButton5");
        QCOMPARE(desk.t.dialogs.asked.last().title, u"Cari Dosyası Seçin"_s);
        QCOMPARE(desk.t.dialogs.asked.last().filter, u"Text Dosyaları (txt)|*.txt"_s);
        QCOMPARE(desk.find<QLineEdit>("sayimform", "Text1")->text(), u"SYM000001"_s);
        desk.click("sayimform", "chameleonButton1");
        QCOMPARE(desk.boxes.taken(), QStringList{u"Tamam/1: Xml Dönüşümü Tamamlandı..."_s});
        const QByteArray slip = readBytes(desk.t.path(u"s.xml"_s));
        QCOMPARE(slip.count(toCodePage(u"<ITEM_CODE>ŞKR</ITEM_CODE>"_s)), 2);
        QVERIFY(slip.contains("<NUMBER>SYM000001</NUMBER>"));
        QVERIFY(slip.contains("<QUANTITY>1.5</QUANTITY>"));

        desk.logo.behave({.dropAfter = 3});
        desk.window.findChild<SayimWindow *>()->sayimform().load(); // a connection that is cut
        desk.t.dialogs.answers = {desk.t.path(u"s.txt"_s)};
        desk.click("sayimform", "chameleonButton5");
        QCOMPARE(desk.find<QLabel>("sayimform", "sb1_2")->text(), u"2"_s);
        QCOMPARE(desk.boxes.taken().size(), 1);
    }

    void aLineThatIsCutLeavesTheTitlesBeforeItChanged()
    {
        Desk desk;
        desk.saveSettings();
        QByteArray cards;
        for (const QString &code : {u"K1000001"_s, u"K1000002"_s, u"K1000003"_s, u"K1000004"_s}) {
            desk.logo.run(u"insert into LG_012_CLCARD values (1, '%1', 'Eski', 0)"_s.arg(code));
            cards += ruled(u"", 3, code, 11, u"Işık Şti");
        }
        writeBytes(desk.t.path(u"c.txt"_s), cards);
        desk.window.open(u"cr"_s);
        desk.window.findChild<CrWindow *>()->cr().dosyaac(desk.t.path(u"c.txt"_s));
        const auto titles = [&] {
            QStringList all;
            for (const QStringList &row : desk.logo.run(u"select DEFINITION_ from LG_012_CLCARD"_s))
                all << row.first();
            return all.join(u'|');
        };
        const auto update = [&] {
            desk.click("cr", "chameleonButton3");
            desk.click("sqlbaglanti", "chameleonButton1");
            QCOMPARE(desk.boxes.taken(), QStringList{u"Dikkat/0: Bağlantı Sağlandı..."_s});
            desk.click("sqlbaglanti", "chameleonButton2");
        };
        desk.logo.behave({.dropAfter = 3}); // the firm list and two titles
        update();
        QStringList shown = desk.boxes.taken();
        QCOMPARE(shown.size(), 1);
        QVERIFY2(shown[0].startsWith(u"/0: "_s) && shown[0].size() > 8, qPrintable(shown[0]));
        QCOMPARE(titles(), u"Işık Şti|Işık Şti|Eski|Eski"_s);
        QTRY_COMPARE(desk.find<QProgressBar>("sqlbaglanti", "p1")->value(), 2);
        desk.click("sqlbaglanti", "chameleonButton8");
        QTRY_VERIFY(!desk.window.findChild<QDialog *>(u"sqlbaglanti"_s));

        desk.logo.behave({});
        update();
        QCOMPARE(desk.boxes.taken(), QStringList{u"Dikkat/2: Cari Güncelleme Tamamlandı..."_s});
        QCOMPARE(titles(), u"Işık Şti|Işık Şti|Işık Şti|Işık Şti"_s);
    }
};

QTEST_MAIN(TestLogo)
#include "tst_logo.moc"
