#include "logolink/sqlbaglanti.h"
#include "logolink/statements.h"
#include "support/fakes.h"
#include "support/table.h"

#include <QFileInfo>

#ifdef Q_OS_WIN
#include <windows.h>
// Behind it, which they need.
#include <aclapi.h>
#endif

using namespace kervan;

namespace {

const Box incomplete{u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop};
const Box connected{u"Bağlantı Sağlandı..."_s, u"Dikkat"_s};
const Box notConnected{u"Bağlantı Sağlanamadı..."_s, u"Dikkat"_s};

// Whether nobody gets into the file but its owner and the system itself.
bool isForItsOwnerAlone(const QString &file)
{
#ifdef Q_OS_WIN
    PSID owner = nullptr;
    PACL rights = nullptr;
    PSECURITY_DESCRIPTOR all = nullptr;
    std::wstring name = file.toStdWString();
    if (GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT,
                              OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, &owner,
                              nullptr, &rights, nullptr, &all) != ERROR_SUCCESS)
        return false;
    bool isAlone = rights && rights->AceCount > 0;
    for (DWORD i = 0; isAlone && i < rights->AceCount; ++i) {
        void *entry = nullptr;
        GetAce(rights, i, &entry);
        PSID who = &static_cast<ACCESS_ALLOWED_ACE *>(entry)->SidStart;
        isAlone = EqualSid(who, owner) || IsWellKnownSid(who, WinLocalSystemSid);
    }
    LocalFree(all);
    return isAlone;
#else
    return !(QFileInfo(file).permissions() &
             (QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther));
#endif
}

QString fieldsOf(const Sqlbaglanti &screen)
{
    return QStringList{screen.sunucu.text(), screen.kullanici.text(), screen.sifre.text(),
                       screen.veritabani.text(), screen.firma.text()}
        .join(u'|');
}

class Desk
{
public:
    TestProgram t;
    Grid cards{{{u"Kod"_s}, {u"Unvan"_s}}};
    Sqlbaglanti screen{t.program, &cards};

    Desk()
    {
        t.reachLogo();
        t.sqlServer.answer = [](const QString &) -> SqlRows {
            return {{u"NAME"_s, u"NR"_s},
                    {{u"Şube"_s, u"12"_s}, {u"İkinci"_s, u"3"_s}, {{}, u"4"_s}}};
        };
    }
    void card(const QString &code, const QString &title)
    {
        cards.setCell(cards.addRow(code), 1, title);
    }
};

} // namespace

class TestSqlbaglanti : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void openingShowsWhatTheFileHoldsAndWarnsOfGaps_data()
    {
        addTable(uR"(
case                          ; file                          ; fields       ; warned
no password is no gap         ; S\r\nu\r\n\r\nD\r\n7- A\r\n   ; S|u||D|7- A  ; no
a short file ends in silence  ; S\r\nu\r\n                    ; S|u|||       ; no
no firm                       ; S\r\nu\r\np\r\nD\r\n\r\n      ; S|u|p|D|     ; yes
no server                     ; \r\nu\r\np\r\nD\r\n7- A\r\n   ; |u|p|D|7- A  ; yes
no user                       ; S\r\n\r\np\r\nD\r\n7- A\r\n   ; S||p|D|7- A  ; yes
no database                   ; S\r\nu\r\np\r\n\r\n7- A\r\n   ; S|u|p||7- A  ; yes)"_s);
    }
    void openingShowsWhatTheFileHoldsAndWarnsOfGaps()
    {
        TestProgram t;
        Sqlbaglanti screen(t.program, nullptr);
        screen.yukle(); // without a file
        QCOMPARE(fieldsOf(screen), u"|sa|||"_s);
        writeBytes(t.path(u"sqlbaglan.kvz"_s), fetch("file").toLatin1());
        if (fetch("warned") == u"yes")
            t.boxes.expect(incomplete);
        screen.yukle();
        QCOMPARE(fieldsOf(screen), fetch("fields"));
        QVERIFY(t.sqlServer.texts.isEmpty());
    }

    void theTestConnectsAndLoadsTheFirmsAndLetsTheUpdateStart()
    {
        Desk desk;
        desk.screen.yukle();
        desk.screen.sifre.setText(u"yeni"_s);
        desk.t.boxes.expect(connected);
        desk.screen.sqltest();
        QCOMPARE(desk.t.sqlServer.texts,
                 QStringList{u"Server=SRV;Provider=SQLOLEDB;UID=sa;PWD=yeni;database=DB;"_s});
        QCOMPARE(desk.t.sqlServer.options.commandTimeout, 3);
        QCOMPARE(desk.t.sqlServer.options.connectionTimeout, 3);
        QCOMPARE(desk.screen.durum.text(), u"SQL Bağlantı Var"_s);
        QVERIFY(desk.screen.baslanabilir.isChecked());
        QCOMPARE(desk.screen.firma.entries(),
                 QStringList({u"12- Şube"_s, u"3- İkinci"_s, u"4- "_s}));
        QCOMPARE(desk.screen.firma.text(), u"7- Merkez"_s); // as saved, though Logo lacks it
        QCOMPARE(desk.t.sqlServer.statements, QStringList{u"select * from L_CAPIFIRM"_s});

        desk.screen.firma.setText(u"3- İkinci"_s);
        desk.t.sqlServer.answer = [](const QString &) -> SqlRows {
            throw Failure(u"kesildi"_s);
        };
        desk.screen.firmayuklesec();
        QCOMPARE(desk.screen.firma.text(), QString());
        QCOMPARE(desk.screen.firma.entries(), QStringList());
        QCOMPARE(desk.screen.bilgi.text(), u"kesildi"_s);
        desk.t.sqlServer.answer = [](const QString &) -> SqlRows {
            return {};
        };
        desk.screen.firmayuklesec();
        QCOMPARE(desk.screen.bilgi.text(), QString());
    }

    void aConnectionThatFailsIsToldTwiceAndAnEmptyFieldTestsTheOneBefore()
    {
        Desk desk;
        desk.screen.firmayuklesec(); // no connection yet: nothing
        desk.t.boxes.expect(notConnected);
        desk.screen.sqltest(); // nothing to connect to
        desk.screen.yukle();
        desk.t.sqlServer.failure = u"sunucu yok"_s;
        desk.screen.durum.setText(u"önceki"_s);
        desk.t.boxes.expect({.text = u"sunucu yok"_s});
        desk.t.boxes.expect(notConnected);
        desk.screen.sqltest();
        QCOMPARE(desk.screen.durum.text(), u"önceki"_s);
        QVERIFY(!desk.screen.baslanabilir.isChecked());

        desk.t.sqlServer.failure.clear();
        desk.t.sqlServer.opens = false;
        desk.t.boxes.expect(notConnected);
        desk.screen.sqltest();
        QCOMPARE(desk.screen.durum.text(), u"SQL Bağlantı Yok"_s);
        desk.screen.firmayuklesec();
        QVERIFY(desk.t.sqlServer.statements.isEmpty());

        desk.t.sqlServer.opens = true;
        desk.t.boxes.expect(connected);
        desk.screen.sqltest();
        desk.screen.veritabani.setText({});
        desk.t.boxes.expect(connected); // the earlier one
        desk.screen.sqltest();
        QCOMPARE(desk.t.sqlServer.texts.size(), 3);
        desk.screen.veritabani.setText(u"DB"_s);
        desk.t.sqlServer.failure = u"sunucu yok"_s;
        desk.t.boxes.expect({.text = u"sunucu yok"_s});
        desk.t.boxes.expect(notConnected); // the earlier one is gone
        desk.screen.sqltest();
    }

    void savingReplacesTheFileForItsOwnerAloneAndRefusesGaps()
    {
        Desk desk;
        const QString file = desk.t.path(u"sqlbaglan.kvz"_s);
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
        QVERIFY(!isForItsOwnerAlone(file));
        desk.screen.sunucu.setText(u"SRV,1444"_s);
        desk.screen.sifre.setText(u"şifre;\""_s);
        desk.t.boxes.expectWarning(u"Bağlantı Bilgilerini Boş Bırakmayınız..."_s, Icon::Stop);
        QVERIFY(!desk.screen.kaydet());
        desk.screen.veritabani.setText(u"LOGO"_s);
        QVERIFY(desk.screen.kaydet());
        QCOMPARE(readBytes(file), QByteArray("SRV,1444\r\nsa\r\n\xFE"
                                             "ifre;\"\r\nLOGO\r\n\r\n"));
        QVERIFY(isForItsOwnerAlone(file));
        QFile::remove(file);
        QVERIFY(QDir().mkdir(file)); // can't be replaced: the screen stays, without a box
        QVERIFY(!desk.screen.kaydet());
        QVERIFY(desk.screen.bilgi.text().contains(u"sqlbaglan.kvz"_s));
        desk.screen.sunucu.setText(u"SRV\nsa"_s); // would be read back as two values
        QVERIFY(!desk.screen.kaydet());
    }

    void theUpdateSendsOneStatementACardUntilOneFails()
    {
        Desk desk;
        desk.t.boxes.expectWarning(u"Cari Listesinde Kayıt Bulunamadı..."_s);
        desk.screen.guncellemebaslat();
        desk.card(u"120.01"_s, u"Çınar Gıda"_s);
        desk.card(u"120.02"_s, {});
        desk.screen.yukle();
        desk.t.boxes.expect(connected);
        desk.screen.sqltest();
        desk.screen.firma.setText(u"1-Merkez-2"_s);
        desk.t.sqlServer.statements.clear();
        desk.t.boxes.expectWarning(u"Cari Güncelleme Tamamlandı..."_s);
        desk.screen.guncellemebaslat();
        QCOMPARE(
            desk.t.sqlServer.statements,
            QStringList({u"UPDATE LG_001_CLCARD SET DEFINITION_='Çınar Gıda' where CODE='120.01'"_s,
                         u"UPDATE LG_001_CLCARD SET DEFINITION_='' where CODE='120.02'"_s}));
        QVERIFY(!desk.screen.ilerleme.isShown());

        desk.card(u"12'' BORU"_s, u"''"_s); // pairs stay inside their quotes
        desk.card(u"x'; DROP TABLE LG_001_CLCARD --"_s, u"Ada"_s);
        desk.card(u"120.04"_s, u"Sonra"_s);
        desk.t.sqlServer.statements.clear();
        desk.t.boxes.expect({.text = u"Bu değer SQL komutunu bozar, komut gönderilmedi: "
                                     "x'; DROP TABLE LG_001_CLCARD --"_s});
        desk.screen.guncellemebaslat();
        QCOMPARE(desk.t.sqlServer.statements.size(), 3);
        QVERIFY(desk.screen.ilerleme.isShown());
        QCOMPARE(desk.screen.ilerleme.value(), 3);
    }

    void theFirmNumberStandsInTheTableNames()
    {
        const auto table = [](const QString &line) {
            return cardSelect(line, u"K"_s).text().section(u' ', 3, 3);
        };
        QCOMPARE(table(u"12- Şube"_s), u"LG_012_CLCARD"_s);
        QCOMPARE(table(u"1-Merkez-2"_s), u"LG_001_CLCARD"_s);
        QCOMPARE(table(u"1234- A"_s), u"LG_1234_CLCARD"_s);
        QCOMPARE(table(u"5"_s), u"LG_005_CLCARD"_s);
        QCOMPARE(table(u" 7 -x"_s), u"LG_007_CLCARD"_s);
        QCOMPARE(table(u"abc-"_s), u"LG_abc_CLCARD"_s);
        QCOMPARE(cardSelect(u"7"_s, u"K"_s).text(),
                 u"Select * from LG_007_CLCARD where CODE='K'"_s);
    }

    void aStatementTakesNothingButTheNumberOfTheFirm()
    {
        QVERIFY(cardSelect(u"1 x"_s, u"K"_s).breakingValue());
        QCOMPARE(barcodeSelect(u"1-"_s, u"869"_s).text(),
                 u"Select ITEM.CODE as ITEMKOD, UNIT.CODE as BIRIMKOD from LG_001_UNITBARCODE BAR "
                 "WITH(NOLOCK) LEFT OUTER JOIN LG_001_ITEMS ITEM WITH(NOLOCK) ON (BAR.ITEMREF  =  "
                 "ITEM.LOGICALREF) LEFT OUTER JOIN LG_001_UNITSETL UNIT WITH(NOLOCK) ON "
                 "(BAR.UNITLINEREF = UNIT.LOGICALREF) where BAR.BARCODE='869'"_s);
    }
};

QTEST_GUILESS_MAIN(TestSqlbaglanti)
#include "tst_sqlbaglanti.moc"
