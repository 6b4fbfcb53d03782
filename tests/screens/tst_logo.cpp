#include "cards/screens/crwindow.h"
#include "check/screens/checkpane.h"
#include "controls/gridview.h"
#include "invoices/columns.h"
#include "invoices/screens/fatwindow.h"
#include "stocktake/screens/sayimwindow.h"
#include "support/cells.h"
#include "support/logodesk.h"
#include "support/ruler.h"

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDirIterator>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QScopeGuard>
#include <QSettings>

using namespace kervan;

namespace {

// All that a reader could say of a window and of what stands in it.
QStringList allToldOf(QWidget *window)
{
    QStringList told;
    QList<QAccessibleInterface *> open{QAccessible::queryAccessibleInterface(window)};
    while (!open.isEmpty()) {
        const QAccessibleInterface *at = open.takeLast();
        for (const auto kind :
             {QAccessible::Name, QAccessible::Value, QAccessible::Description, QAccessible::Help})
            told << at->text(kind);
        for (int child = 0; child < at->childCount(); ++child) {
            if (QAccessibleInterface *next = at->child(child))
                open << next;
        }
    }
    for (const QWidget *part : window->findChildren<QWidget *>())
        told << part->toolTip() << part->statusTip() << part->whatsThis();
    return told;
}

} // namespace

class TestLogo : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSettingsAreTestedSavedAndReachTheOpenInvoiceScreen()
    {
        LogoDesk desk;
        const auto label9 = [&] {
            return desk.find<QLabel>("fat", "Label9")->text();
        };
        const auto field = [&](const char *name) {
            return desk.find<QLineEdit>("sqlbaglanti", name);
        };
        desk.window.open(u"fat"_s);
        QCOMPARE(label9(), u"SQL Bağlantı Yok"_s);
        desk.window.open(u"sqlbaglanti"_s);
        const auto *update = desk.find<QWidget>("sqlbaglanti", "fr1");
        QVERIFY(update->isHidden());
        desk.click("sqlbaglanti", "guncellemeyegec");
        QVERIFY(update->isVisible());

        field("Text1")->insert(u"S\nR\r\nV"_s); // as a paste brings it
        QCOMPARE(field("Text1")->text(), u"SRV"_s);
        QCOMPARE(field("Text3")->echoMode(), QLineEdit::Password);
        desk.click("sqlbaglanti", "Check1");
        QCOMPARE(field("Text3")->echoMode(), QLineEdit::Normal);
        field("Text4")->clear();
        auto *test = desk.find<QAbstractButton>("sqlbaglanti", "chameleonButton1");
        QTest::keyClick(test, Qt::Key_Return); // presses what has the focus, and not "Kaydet"
        const QString failed = u"Bağlantı Sağlanamadı..."_s;
        QCOMPARE(desk.boxes.taken(u"Dikkat"_s), QStringList{failed});

        field("Text1")->setText(desk.logo.server());
        field("Text3")->setText(u"yanlış"_s);
        field("Text4")->setText(u"LOGODB"_s);
        test->click();
        QVERIFY(!desk.boxes.shown.isEmpty());
        const Box refusal = desk.boxes.shown.takeFirst();
        QVERIFY2(refusal.text.startsWith(u"Oturum açılamadı: kullanıcı adı ya da şifre yanlış.\n"
                                         "Login failed for user 'sa'."_s),
                 qPrintable(refusal.text));
        QCOMPARE(refusal.title, QString());
        QCOMPARE(desk.boxes.taken(u"Dikkat"_s), QStringList{failed});
        const auto *start = desk.find<QWidget>("sqlbaglanti", "chameleonButton2");
        QVERIFY(!start->isEnabled());

        field("Text3")->setText(TdsStandin::password.toString());
        test->click();
        QCOMPARE(desk.boxes.taken(u"Dikkat"_s), QStringList{u"Bağlantı Sağlandı..."_s});
        const auto *label6 = desk.find<QLabel>("sqlbaglanti", "Label6");
        QCOMPARE(label6->text(), u"SQL Bağlantı Var"_s);
        QVERIFY(label6->styleSheet().contains(u"color: #00ff00"_s) && start->isEnabled());
        QVERIFY(start->property("writes").toBool()); // into Logo itself, which shows
        desk.click("sqlbaglanti", "chameleonButton3");
        QVERIFY(update->isHidden());
        auto *firm = desk.find<QComboBox>("sqlbaglanti", "c1");
        QCOMPARE(firm->itemText(0), u"12- ÖRNEK GIDA LTD. ŞTİ."_s);
        firm->setEditText(firm->itemText(0));
        desk.click("sqlbaglanti", "chameleonButton7");
        QTRY_VERIFY(!desk.window.findChild<QDialog *>(u"sqlbaglanti"_s));
        QCOMPARE(label9(), u"SQL Bağlantı Var"_s);
    }

    // It stands in its file, and the driver is handed it; nobody else gets to see it.
    void thePasswordIsNowhereElse()
    {
        LogoDesk desk;
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, desk.t.path(u"masaüstü"_s));
        QCoreApplication::setOrganizationName(u"Deneme"_s); // so that windows remember things
        const auto forget = qScopeGuard([] { QCoreApplication::setOrganizationName({}); });
        desk.saveSettings();
        const QString password = TdsStandin::password.toString();
        QStringList seen;
        const auto look = [&] {
            for (const Box &box : std::exchange(desk.boxes.shown, {}))
                seen << box.title << box.text;
            seen << allToldOf(&desk.window) << QGuiApplication::clipboard()->text();
        };
        const QList<StandinManners> lines{
            {}, {.refusesLogin = true}, {.error = u"kilitli"_s}, {.dropAfter = 0}};
        for (const StandinManners &manners : lines) {
            desk.logo.behave(manners);
            for (const char *screen : {"fat", "cr", "sayimform"}) {
                desk.window.open(QString::fromUtf8(screen));
                look();
            }
            desk.window.open(u"sqlbaglanti"_s);
            auto *field = desk.find<QLineEdit>("sqlbaglanti", "Text3");
            QCOMPARE(field->text(), password);
            field->selectAll();
            field->copy();
            desk.click("sqlbaglanti", "chameleonButton1");
            look();
            desk.click("sqlbaglanti", "chameleonButton7");
            look();
            qDeleteAll(desk.window.findChildren<QDialog *>(u"sqlbaglanti"_s));
        }
        QVERIFY(seen.filter(u"Login failed for user 'sa'."_s).size() > 0);
        seen << desk.logo.statements();
        desk.window.close();
        bool areRemembered = false;
        QDirIterator files(desk.t.folder.path(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QFileInfo file = files.nextFileInfo();
            areRemembered = areRemembered || file.suffix() == u"ini";
            if (file.fileName() != u"sqlbaglan.kvz")
                seen << QString::fromLatin1(readBytes(file.filePath()));
        }
        QVERIFY(areRemembered);
        QCOMPARE(seen.filter(u"Gizli"_s) + seen.filter(u"ifre1"_s), QStringList());
    }

    void customersWhoTakeEInvoicesAreMarkedUntilAStatementFails()
    {
        LogoDesk desk;
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
        QCOMPARE(column(fat->fat().liste.l1, L1::EFatura), u"Evet,,,Evet,,"_s);
        QCOMPARE(desk.boxes.taken(u"Dikkat"_s, Icon::Stop),
                 QStringList{u"Bu değer SQL komutunu bozar, komut gönderilmedi: C'5 "
                             "E-Fatura Okunurken Hata Oluştu"_s});
        QCOMPARE(desk.logo.statements().size(), 4);
        QCOMPARE(desk.logo.statements()[0], u"Select * from LG_012_CLCARD where CODE='Ç1'"_s);
        QVERIFY(desk.find<QProgressBar>("fat", "pr1")->isVisible());
        QVERIFY(desk.find<QLabel>("fat", "bilgi")
                    ->text()
                    .contains(u"E-Fatura işaretleri 5. satırda kaldı: Bu değer SQL komutunu"));
    }

    void aStockCountIsReadAndSaved()
    {
        LogoDesk desk;
        desk.saveSettings();
        for (const QString &row :
             {u"UNITBARCODE values ('869', 1, 2)"_s, u"ITEMS values (1, 'ŞKR', 'x')"_s,
              u"UNITSETL values (2, 'KOLİ', 'x')"_s})
            desk.logo.run(u"insert into LG_012_"_s + row);
        writeBytes(desk.t.path(u"s.txt"_s),
                   ruled(u"869", 15, u"1,5") + ruled(u"111", 15, u"2") + ruled(u"869", 15, u"3"));
        desk.window.open(u"sayimform"_s);
        QCOMPARE(desk.find<QLabel>("sayimform", "Label9")->text(), u"SQL Bağlantı Var"_s);
        desk.t.dialogs.answers = {desk.t.path(u"s.txt"_s), desk.t.path(u"logo xml/s"_s)};
        desk.click("sayimform", "chameleonButton5");
        QCOMPARE(desk.find<QLabel>("sayimform", "sb1_2")->text(), u"3"_s);
        QCOMPARE(desk.t.dialogs.asked.last().title, u"Cari Dosyası Seçin"_s);
        QCOMPARE(desk.t.dialogs.asked.last().filter, u"Text Dosyaları (txt)|*.txt"_s);
        desk.click("sayimform", "chameleonButton1");
        QCOMPARE(desk.boxes.taken(u"Tamam"_s, Icon::Information),
                 QStringList{u"Xml Dönüşümü Tamamlandı..."_s});
        const QByteArray slip = readBytes(desk.t.path(u"logo xml/s.xml"_s));
        QCOMPARE(slip.count(toCodePage(u"<ITEM_CODE>ŞKR</ITEM_CODE>"_s)), 2);
        QVERIFY(slip.contains("<NUMBER>SYM000001</NUMBER>"));
        QVERIFY(slip.contains("<QUANTITY>1.5</QUANTITY>"));

        auto *pane = desk.window.findChild<SayimWindow *>()->findChild<CheckPane *>();
        pane->showPage(desk.find<QWidget>("sayimform", "denetim"));
        const auto *found = desk.find<GridView>("sayimform", "bulgular")->model();
        const auto isWritten = [found] {
            return !found
                        ->match(found->index(0, 3), Qt::DisplayRole, u"bu numara yazılmış"_s, 1,
                                Qt::MatchContains)
                        .isEmpty();
        };
        QTRY_VERIFY(isWritten());
        desk.find<QLineEdit>("sayimform", "Text1")->setText(u"SYM000002"_s);
        QTRY_VERIFY(!isWritten());

        desk.logo.behave({.dropAfter = 3});
        desk.window.findChild<SayimWindow *>()->sayimform().load(); // a connection that is cut
        desk.t.dialogs.answers = {desk.t.path(u"s.txt"_s)};
        desk.click("sayimform", "chameleonButton5");
        QCOMPARE(desk.find<QLabel>("sayimform", "sb1_2")->text(), u"0"_s);
        QVERIFY(desk.find<QLabel>("sayimform", "bilgi")->text().startsWith(u"Okuma 2. satırda"));
        QCOMPARE(desk.find<QLabel>("sayimform", "Label9")->text(), u"SQL Bağlantı Yok"_s);
        QCOMPARE(desk.boxes.shown.size(), 1);
    }

    void aLineThatIsCutLeavesTheTitlesBeforeItChanged()
    {
        LogoDesk desk;
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
            const QString all = u"select group_concat(DEFINITION_, '|') from LG_012_CLCARD"_s;
            return desk.logo.run(all)[0][0];
        };
        const auto update = [&] {
            desk.click("cr", "chameleonButton3");
            desk.click("sqlbaglanti", "chameleonButton1");
            QCOMPARE(desk.boxes.taken(u"Dikkat"_s), QStringList{u"Bağlantı Sağlandı..."_s});
            desk.click("sqlbaglanti", "chameleonButton2");
        };
        desk.logo.behave({.dropAfter = 3}); // the firm list and two titles
        update();
        QCOMPARE(desk.boxes.shown.size(), 1);
        const Box cut = desk.boxes.shown.takeFirst();
        QCOMPARE(cut.title, QString());
        QVERIFY(cut.icon == Icon::None && cut.text.size() > 4);
        QCOMPARE(titles(), u"Işık Şti|Işık Şti|Eski|Eski"_s);
        QTRY_COMPARE(desk.find<QProgressBar>("sqlbaglanti", "p1")->value(), 2);
        desk.click("sqlbaglanti", "chameleonButton8");
        QTRY_VERIFY(!desk.window.findChild<QDialog *>(u"sqlbaglanti"_s));

        desk.logo.behave({});
        update();
        QCOMPARE(desk.boxes.taken(u"Dikkat"_s, Icon::Exclamation),
                 QStringList{u"Cari Güncelleme Tamamlandı..."_s});
        QCOMPARE(titles(), u"Işık Şti|Işık Şti|Işık Şti|Işık Şti"_s);
    }
};

QTEST_MAIN(TestLogo)
#include "tst_logo.moc"
