// The invoice screen without its window: loading, choosing, the two export buttons, the list.

#include "desk.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

const QString noRows = u"Fatura Listesinde Kayıt Bulunamadı...!"_s;
const QString noFirm = u"Firma Seçiniz...!"_s;
const QString noTicks = u"Fatura Listesinden Seçim Yapılması Gerekiyor...!"_s;
const QString reallyRemove = u"Faturayı Listeden Silmek İstediğinize Eminmisiniz ?"_s;

void warning(Desk &desk, const QString &text)
{
    desk.expectBox(text, u"Dikkat"_s, Icon::Exclamation);
}

QByteArray three()
{
    return header({.no = u"F1"_s, .date = u"20240306"_s, .title = u"Ada"_s}) + goods(u"P1") +
           header({.no = u"F2"_s, .title = u"Oda ada"_s}) + goods(u"P1") +
           header({.no = u"F3"_s, .date = u"20240308"_s, .title = u"ADA"_s}) + goods(u"P1");
}

void tick(Grid &list, const QList<int> &rows)
{
    for (const int row : rows)
        list.setTicked(row, true);
}

QString ticks(const Grid &list)
{
    QString marks;
    for (int row = 0; row < list.rows(); ++row)
        marks += list.ticked(row) ? u'x' : u'-';
    return marks;
}

// Files of the program folder that an export wrote, or left behind.
QString written(const Desk &desk)
{
    QStringList names =
        QDir(desk.t.folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    names.removeIf(
        [](const QString &name) { return name.endsWith(u".dbs"_s) || name == u"kaynak.bif"; });
    return names.join(u' ');
}

void dropTable(const QString &file, const QString &table)
{
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"drop"_s);
        db.setDatabaseName(file);
        QVERIFY(db.open());
        QVERIFY(QSqlQuery(db).exec(u"drop table "_s + table));
    }
    QSqlDatabase::removeDatabase(u"drop"_s);
}

} // namespace

class TestFat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void loadFillsTheListsAndPresets();
    void aTableThatCannotBeReadEndsTheListsThere_data();
    void aTableThatCannotBeReadEndsTheListsThere();
    void anEmptyConnectionLineIsReportedAndAMissingOneIsNot();
    void aFirmOrRateThatIsNotFoundKeepsTheValuesOfTheOneBefore();
    void aCancelledPickLeavesTheListAloneAndYetCountsAsPressed();
    void theDateBoxFiltersTheListAsItIsAndReadsAgainWhenUnticked();
    void aDateCountsOnlyWhileTheBoxIsTicked();
    void theSaveButtonChecksListFirmAndTicks();
    void theAutomaticButtonChecksListFirmRateAndUnitSet();
    void theSaveDialogStartsInXfIfXcIsSet_data();
    void theSaveDialogStartsInXfIfXcIsSet();
    void aChosenName_data();
    void aChosenName();
    void theAutomaticTargetIsXfAsItStands();
    void aTargetThatCannotBeWrittenStillEndsWithSuccess();
    void aFullDiskLeavesTheOldFilesWhole_data();
    void aFullDiskLeavesTheOldFilesWhole();
    void aRowThatTheCashStepCannotRead_data();
    void aRowThatTheCashStepCannotRead();
    void anExportCanBeRepeatedAndLeavesTicksAndNumbers();
    void aSourceThatIsGoneExportsHeadsWithoutLines();
    void ticksByEFaturaAndAllAtOnce();
    void theViewsReadAgainAndKeepOneKind();
    void theTitleSearchMindsCaseAndTicksNothing();
    void removingAsksAndKeepsTheNumbersOfTheOthers();
};

void TestFat::loadFillsTheListsAndPresets()
{
    Desk desk; // the lists are filled from what a desk lays down
    desk.t.fill(u"data.dbs"_s,
                {u"Update yol set ec = 'a', es = 'b', ef = 'c', xc = 'd', xs = 'e', xf = 'f' Where "
                 "id='1'"_s,
                 u"insert into odm values (Null,'P30','Otuz','','','','','','')"_s});
    desk.t.fill(u"fatozkod.dbs"_s, {u"insert into ozkod values (Null,'OZ')"_s});
    writeBytes(desk.t.path(u"kdvmu.kvz"_s), "genel, tam\r\n"); // one line too few
    Fat fat(desk.t.program);
    fat.load();
    fat.yukle(); // the lists follow the definition screens and don't grow
    QCOMPARE(fat.liste.d1.date(), QDate(2024, 3, 7));
    QCOMPARE(fat.liste.d2.date(), QDate(2024, 3, 7));
    QCOMPARE(fat.fatbilgi.text(), u"10 (Satış Faturaları)"_s);
    QCOMPARE(fat.fatbilgi.entries().join(u';'),
             u"10 (Satış Faturaları);20 (Alış Faturaları);30 (Satış İade);40 (Alış İade);"
             "80 (Satış)"_s);
    const Folders &folders = desk.t.program.folders;
    QCOMPARE(folders.ec + folders.es + folders.ef + folders.xc + folders.xs + folders.xf,
             u"abcdef"_s);
    QCOMPARE(fat.c5.entries(), QStringList({u""_s, u"P30<>Otuz"_s}));
    QCOMPARE(fat.kdyaz.text(), u"18"_s);
    QCOMPARE(fat.c1.entries() + fat.c2.entries() + fat.c3.entries(),
             QStringList({u"18"_s, u"Merkez"_s}));
    QCOMPARE(cells(fat.lbrm, 0, {0, 1}), u"PAKET|PK"_s);
    QCOMPARE(cells(fat.persl, 0, {0, 1}), u"LP1|S1"_s);
    QCOMPARE(fat.pers.entries(), QStringList({u""_s, u"S1"_s}));
    QCOMPARE(fat.c4.entries(), QStringList({u""_s, u"OZ"_s}));
    QCOMPARE(fat.kdvmuafiyetgenel, u"genel, tam"_s);
    QCOMPARE(fat.kdvmuafiyetsatir, QString());
}

void TestFat::aTableThatCannotBeReadEndsTheListsThere_data()
{
    QTest::addColumn<QString>("broken");
    QTest::addColumn<QString>("expected"); // folders, c5, kdyaz, c1, c3, lbrm, persl, pers, c4
    QTest::newRow("data.dbs missing") << u"-data.dbs"_s << u"-0-000000"_s;
    QTest::newRow("data.dbs no database") << u"=data.dbs"_s << u"-0-000000"_s;
    QTest::newRow("no yol") << u"yol"_s << u"-0-000000"_s;
    QTest::newRow("no odm") << u"odm"_s << u"f0-000000"_s;
    QTest::newRow("no kdv") << u"kdv"_s << u"f1-000000"_s;
    QTest::newRow("no muh") << u"muh"_s << u"f1k000000"_s;
    QTest::newRow("no firma") << u"firma"_s << u"f1k100000"_s;
    QTest::newRow("no birim") << u"birim"_s << u"f1k110000"_s;
    QTest::newRow("no per") << u"per"_s << u"f1k112000"_s;
    QTest::newRow("fatozkod.dbs missing") << u"-fatozkod.dbs"_s << u"f1k112120"_s;
    QTest::newRow("nothing") << QString() << u"f1k112121"_s;
}

void TestFat::aTableThatCannotBeReadEndsTheListsThere()
{
    QFETCH(QString, broken);
    QFETCH(QString, expected);
    Desk desk;
    desk.set(u"xf"_s, u"f"_s);
    if (broken.startsWith(u'-'))
        QVERIFY(QFile::remove(desk.t.path(broken.mid(1))));
    else if (broken.startsWith(u'='))
        writeBytes(desk.t.path(broken.mid(1)), "no database, but more than sixteen bytes");
    else if (!broken.isEmpty())
        dropTable(desk.t.path(u"data.dbs"_s), broken);
    writeBytes(desk.t.path(u"kdvmu.kvz"_s), "genel\r\nsatir\r\n");
    desk.t.program.folders = {};
    desk.t.program.aktifform.clear();
    Fat fat(desk.t.program);
    fat.load();
    QString found = desk.t.program.folders.xf.isEmpty() ? u"-"_s : u"f"_s;
    found += QString::number(fat.c5.entries().size());
    found += fat.kdyaz.text().isEmpty() ? u'-' : u'k';
    for (const qsizetype count :
         {fat.c1.entries().size(), fat.c3.entries().size(), qsizetype(fat.lbrm.rows()),
          qsizetype(fat.persl.rows()), fat.pers.entries().size(), fat.c4.entries().size()})
        found += QString::number(count);
    QCOMPARE(found, expected);
    QCOMPARE(desk.t.program.aktifform + fat.kdvmuafiyetsatir, u"1satir"_s);
}

void TestFat::anEmptyConnectionLineIsReportedAndAMissingOneIsNot()
{
    TestProgram t;
    Fat fat(t.program);
    const auto loadWith = [&](QByteArray lines) {
        writeBytes(t.path(u"sqlbaglan.kvz"_s), lines.replace("/", "\r\n"));
        t.program.aktifform.clear();
        fat.load();
        t.boxes.verify();
        QCOMPARE(t.program.aktifform, u"1"_s);
    };
    for (const char *lines :
         {"/u/p/d/1- A/", "s//p/d/1- A/", "s/u//d/1- A/", "s/u/p//1- A/", "s/u/p/d//"}) {
        t.boxes.expect({u"Bağlantı Bilgilerinde Eksikler Var..."_s, u"Dikkat"_s, Icon::Stop});
        loadWith(lines);
    }
    loadWith("s//p/d/");
    QCOMPARE(t.sqlServer.texts, QStringList());
    t.sqlServer.opens = true;
    loadWith("s/u/p;x/d/012- Ada/");
    QCOMPARE(t.sqlServer.texts,
             QStringList{u"Server=s;Provider=SQLOLEDB;UID=u;PWD=p;x;database=d;"_s});
    QCOMPARE(fat.link.firmakod, u"012- Ada"_s);
    QCOMPARE(fat.link.Label9.text(), u"SQL Bağlantı Var"_s);
    t.sqlServer.failure = u"kapalı"_s;
    t.boxes.expect({.text = u"kapalı"_s});
    fat.sqlyukle();
    QCOMPARE(fat.link.Label9.text(), u"SQL Bağlantı Yok"_s);
}

void TestFat::aFirmOrRateThatIsNotFoundKeepsTheValuesOfTheOneBefore()
{
    Desk desk;
    desk.t.fill(u"data.dbs"_s,
                {u"insert into firma values (Null,'2','','Merkez','','SECOND','','SECOND','')"_s,
                 u"insert into odm values (Null,'P30','Otuz','','','','','','')"_s});
    desk.open(three());
    tick(desk.l1(), {0});
    for (const QString &text : {u"Merkez"_s, u"Ali'nin"_s, u"yok"_s, u""_s}) {
        desk.fat.c3.setText(text);
        desk.fat.c3sec();
    }
    for (const QString &text : {u"18"_s, u"1'8"_s, u"99"_s}) {
        desk.fat.c1.setText(text);
        desk.fat.c1sec();
    }
    desk.fat.c2.setText(u"P'K"_s);
    desk.fat.c2sec();
    desk.fat.c5.setText(u"P30<>Otuz<>gün"_s);
    desk.fat.c5sec();
    desk.exportAll();
    const QByteArray document = readBytes(desk.t.path(u"belge.xml"_s));
    for (const char *element :
         {"<GL_CODE>120</GL_CODE>", "<SOURCE_WH>D1</SOURCE_WH>", "<GL_CODE1>600</GL_CODE1>",
          "<GL_CODE2>391</GL_CODE2>", "<PAYMENT_CODE>P30</PAYMENT_CODE>"})
        QVERIFY2(document.contains(element), element);
}

void TestFat::aCancelledPickLeavesTheListAloneAndYetCountsAsPressed()
{
    Desk desk;
    desk.set(u"ef"_s, u"/kaynaklar"_s);
    desk.l1().addRow(u"by hand"_s);
    desk.fat.yenidenoku();
    QCOMPARE(desk.l1().rows(), 1); // not pressed yet
    desk.t.dialogs.answers << std::nullopt;
    desk.fat.dosyaac();
    QCOMPARE(desk.t.dialogs.asked[0].title, u"Fatura Dosyası Seçin"_s);
    QCOMPARE(desk.t.dialogs.asked[0].filter, u"Bif Dosyaları (bif)|*.bif"_s);
    QCOMPARE(desk.l1().rows(), 1);
    QCOMPARE(desk.fat.baslik.text(), u"FATURA"_s);
    desk.fat.check1sec(); // unticked: reads again, and there is no file
    QCOMPARE(desk.l1().rows(), 0);

    desk.open(three());
    tick(desk.l1(), {1});
    desk.t.dialogs.answers << std::nullopt;
    desk.fat.dosyaac();
    QCOMPARE(ticks(desk.l1()), u"-x-"_s);
    QCOMPARE(desk.fat.baslik.text(), u"FATURA [kaynak.bif]"_s);
    desk.fat.yenidenoku();
    QCOMPARE(ticks(desk.l1()), u"---"_s);

    writeBytes(desk.t.path(u"öbür.bif"_s), header());
    desk.t.dialogs.answers << desk.t.path(u"öbür.bif"_s);
    desk.fat.dosyaac();
    QCOMPARE(desk.l1().rows(), 1);
    QCOMPARE(desk.fat.baslik.text(), u"FATURA [öbür.bif]"_s);
}

void TestFat::theDateBoxFiltersTheListAsItIsAndReadsAgainWhenUnticked()
{
    Desk desk;
    InvoiceList &list = desk.fat.liste;
    list.Check1.setChecked(true);
    list.l1.addRow(u"by hand"_s);
    desk.fat.check1sec();
    QCOMPARE(list.l1.rows(), 1); // "Fatura Dosyası Aç" wasn't pressed
    list.Check1.setChecked(false);

    desk.open(three());
    tick(list.l1, {0, 1, 2});
    list.Check1.setChecked(true);
    desk.fat.check1sec();
    QCOMPARE(column(list.l1, L1::FaturaNumarasi), u"F2"_s);
    QCOMPARE(ticks(list.l1), u"x"_s);
    QCOMPARE(list.l1.cell(0, L1::IslemNo), u"NT000002"_s); // not numbered again
    QCOMPARE(list.satirSayisi.text(), u"1"_s);
    list.Check1.setChecked(false);
    desk.fat.check1sec();
    QCOMPARE(ticks(list.l1), u"---"_s);
    QCOMPARE(list.satirSayisi.text(), u"3"_s);
}

void TestFat::aDateCountsOnlyWhileTheBoxIsTicked()
{
    Desk desk;
    InvoiceList &list = desk.fat.liste;
    desk.open(three());
    tick(list.l1, {0});
    list.d2.setDate(QDate(2024, 3, 8));
    desk.fat.tarihdegisti();
    QCOMPARE(ticks(list.l1), u"x--"_s);
    list.Check1.setChecked(true);
    desk.fat.tarihdegisti();
    QCOMPARE(column(list.l1, L1::FaturaNumarasi), u"F2,F3"_s);
    list.d1.setDate(QDate(2024, 3, 8));
    desk.fat.tarihdegisti();
    QCOMPARE(column(list.l1, L1::FaturaNumarasi), u"F3"_s);
    list.d1.setDate(QDate(2024, 3, 6));
    desk.fat.tarihdegisti(); // brings back what the filter removed
    QCOMPARE(column(list.l1, L1::FaturaNumarasi), u"F1,F2,F3"_s);
}

void TestFat::theSaveButtonChecksListFirmAndTicks()
{
    Desk desk;
    QSignalSpy firm(&desk.fat.c3, &TextField::focusWanted);
    QSignalSpy rate(&desk.fat.c1, &TextField::focusWanted);
    warning(desk, noRows);
    desk.fat.logoyaaktar();
    QCOMPARE(firm.size(), 0);
    desk.open(three());
    warning(desk, noFirm);
    desk.fat.logoyaaktar();
    QCOMPARE(firm.size(), 1);
    desk.fat.c3.setText(u"Merkez"_s);
    warning(desk, noTicks);
    desk.fat.logoyaaktar();
    QCOMPARE(firm.size() + rate.size(), 1);
    desk.t.boxes.verify();
    QCOMPARE(desk.t.dialogs.asked.size(), 0);

    tick(desk.l1(), {0});
    desk.t.dialogs.answers << std::nullopt;
    desk.fat.logoyaaktar(); // cancelled: no box, no file, no counter
    QCOMPARE(desk.t.dialogs.asked.size(), 1);
    QCOMPARE(desk.t.dialogs.asked[0].filter, u"Xml Dosyaları (xml)|*.xml"_s);
    QCOMPARE(written(desk), QString());
}

void TestFat::theAutomaticButtonChecksListFirmRateAndUnitSet()
{
    Desk desk;
    Fat &fat = desk.fat;
    desk.set(u"xf"_s, desk.t.path(u"belge.xml"_s));
    warning(desk, u"Stok Listesinde Kayıt Bulunamadı...!"_s);
    fat.otomatikkaydet();
    desk.open(three());
    const auto refusedAt = [&](TextField &field, const QString &text, const QString &answer) {
        QSignalSpy focus(&field, &TextField::focusWanted);
        warning(desk, text);
        fat.otomatikkaydet();
        QCOMPARE(focus.size(), 1);
        QCOMPARE(written(desk), QString());
        field.setText(answer);
    };
    refusedAt(fat.c3, noFirm, u"Merkez"_s);
    refusedAt(fat.c1, u"Kdv Oranı Seçiniz...!"_s, u"18"_s);
    refusedAt(fat.c2, u"Birim Seti Seçiniz...!"_s, u"Adet"_s);
    desk.expectDone();
    fat.otomatikkaydet(); // ticks don't matter
    desk.t.boxes.verify();
    QCOMPARE(written(desk), u"belge-KASANAKIT.xml belge.xml kasacariislemno.kvz"_s);
}

void TestFat::theSaveDialogStartsInXfIfXcIsSet_data()
{
    QTest::addColumn<QString>("xc");
    QTest::addColumn<QString>("xf");
    QTest::addColumn<QString>("start"); // "<>" stands for the program folder
    QTest::newRow("both empty") << u""_s << u""_s << u"<>/logo xml"_s;
    QTest::newRow("only xf") << u""_s << u"/hedef/f.xml"_s << u"<>/logo xml"_s;
    QTest::newRow("both") << u"/hedef/c.xml"_s << u"/hedef/f.xml"_s << u"/hedef/f.xml"_s;
    QTest::newRow("only xc") << u"/hedef/c.xml"_s << u""_s << u""_s;
}

void TestFat::theSaveDialogStartsInXfIfXcIsSet()
{
    QFETCH(QString, xc);
    QFETCH(QString, xf);
    QFETCH(QString, start);
    Desk desk;
    desk.set(u"xc"_s, xc);
    desk.set(u"xf"_s, xf);
    desk.open(three());
    tick(desk.l1(), {0});
    desk.fat.c3.setText(u"Merkez"_s);
    desk.t.dialogs.answers << std::nullopt;
    desk.fat.logoyaaktar();
    QCOMPARE(desk.t.dialogs.asked.value(0).start, start.replace(u"<>"_s, desk.t.folder.path()));
}

void TestFat::aChosenName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("files");
    QTest::newRow("with its ending") << u"a.xml"_s << u"a-KASANAKIT.xml a.xml"_s;
    QTest::newRow("without one") << u"a"_s << u"a-KASANAKIT.xml a.xml"_s;
    QTest::newRow("with capitals") << u"a.XML"_s << u"a.XML-KASANAKIT.xml a.XML.xml"_s;
    QTest::newRow("with another one") << u"a.bak"_s << u"a.bak-KASANAKIT.xml a.bak.xml"_s;
}

void TestFat::aChosenName()
{
    QFETCH(QString, name);
    QFETCH(QString, files);
    Desk desk;
    desk.open(three());
    tick(desk.l1(), {0});
    desk.fat.c3.setText(u"Merkez"_s);
    desk.t.dialogs.answers << desk.t.path(name);
    desk.expectDone();
    desk.fat.logoyaaktar();
    desk.t.boxes.verify();
    QCOMPARE(written(desk), files + u" kasacariislemno.kvz"_s);
}

void TestFat::theAutomaticTargetIsXfAsItStands()
{
    Desk desk;
    desk.open(three());
    desk.expectBox(u"Dosya Konumu Hatalı...!Ayarlardan Dosya Konumlarını Kontrol Ediniz."_s,
                   u"Dikkat"_s, Icon::Stop);
    desk.exportTo({});
    QCOMPARE(written(desk), QString());
    desk.expectDone();
    desk.exportTo(desk.t.path(u"cikti.data"_s)); // four characters go, whatever they are
    QCOMPARE(written(desk), u"cikti.-KASANAKIT.xml cikti.data kasacariislemno.kvz"_s);
}

void TestFat::aTargetThatCannotBeWrittenStillEndsWithSuccess()
{
    Desk desk;
    desk.open(three());
    tick(desk.l1(), {0});
    desk.expectDone(false); // neither file has a place
    desk.fat.kaydet(desk.t.path(u"yok/belge.xml"_s));
    desk.t.boxes.verify();
    QCOMPARE(written(desk), u"kasacariislemno.kvz"_s);
    QVERIFY(!desk.fat.pr1.isShown());

    QVERIFY(QDir(desk.t.folder.path()).mkdir(u"belge.xml"_s)); // in the way of the invoices alone
    desk.expectDone();
    desk.fat.kaydet(desk.t.path(u"belge.xml"_s));
    desk.t.boxes.verify();
    QCOMPARE(written(desk), u"belge-KASANAKIT.xml kasacariislemno.kvz"_s);
}

void TestFat::aFullDiskLeavesTheOldFilesWhole_data()
{
    QTest::addColumn<int>("room"); // bytes that a file can take
    QTest::addColumn<QByteArray>("counter");
    QTest::newRow("room for the counter alone") << 64 << QByteArray("8\r\n");
    QTest::newRow("no room at all") << 0 << QByteArray("5\r\n");
}

void TestFat::aFullDiskLeavesTheOldFilesWhole()
{
#ifdef Q_OS_UNIX
    QFETCH(int, room);
    QFETCH(QByteArray, counter);
    Desk desk;
    const auto path = [&](const QString &name) {
        return desk.t.path(name);
    };
    writeBytes(path(u"kasacariislemno.kvz"_s), "5\r\n");
    writeBytes(path(u"belge.xml"_s), "old");
    writeBytes(path(u"belge-KASANAKIT.xml"_s), "old cash");
    desk.open(three());
    tick(desk.l1(), {0, 1, 2});
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = static_cast<rlim_t>(room);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    desk.expectDone(false);
    desk.fat.kaydet(path(u"belge.xml"_s));
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    desk.t.boxes.verify();
    QCOMPARE(readBytes(path(u"belge.xml"_s)), "old");
    QCOMPARE(readBytes(path(u"belge-KASANAKIT.xml"_s)), "old cash");
    QCOMPARE(readBytes(path(u"kasacariislemno.kvz"_s)), counter);
    QCOMPARE(written(desk), u"belge-KASANAKIT.xml belge.xml kasacariislemno.kvz"_s);
#else
    QSKIP("no limit on the size of a file here");
#endif
}

void TestFat::aRowThatTheCashStepCannotRead_data()
{
    QTest::addColumn<QByteArray>("bif");
    QTest::addColumn<bool>("failing");
    const QByteArray good = header({.no = u"F1"_s});
    QTest::newRow("blank date") << good + header({.no = u"F2"_s, .date = u""_s}) << true;
    QTest::newRow("a 13th month") << good + header({.no = u"F2"_s, .date = u"20241301"_s}) << true;
    QTest::newRow("blank grand total") << good + header({.no = u"F2"_s, .grand = u""_s}) << true;
    QTest::newRow("blank date of a row beyond the limit")
        << good + header({.no = u"F2"_s, .date = u""_s, .grand = u"7000"_s}) << false;
    QTest::newRow("blank date of a row that isn't ticked")
        << good + good + header({.no = u"F2"_s, .date = u""_s}) << false;
}

void TestFat::aRowThatTheCashStepCannotRead()
{
    QFETCH(QByteArray, bif);
    QFETCH(bool, failing);
    Desk desk;
    desk.open(bif);
    tick(desk.l1(), {0, 1});
    const QString cash = desk.t.path(u"belge-KASANAKIT.xml"_s);
    writeBytes(cash, "old cash");
    desk.exportAll(!failing);
    QCOMPARE(readBytes(cash) == "old cash", failing);
    const QByteArray document = readBytes(desk.t.path(u"belge.xml"_s));
    QCOMPARE(document.count("</INVOICE>"), 2);
    QVERIFY(written(desk).contains(u"kasacariislemno.kvz"_s)); // stored all the same
}

void TestFat::anExportCanBeRepeatedAndLeavesTicksAndNumbers()
{
    Desk desk;
    desk.open(three());
    tick(desk.l1(), {0, 2});
    desk.exportAll();
    QCOMPARE(ticks(desk.l1()), u"x-x"_s);
    const QByteArray document = readBytes(desk.t.path(u"belge.xml"_s));
    const QByteArray cash = readBytes(desk.t.path(u"belge-KASANAKIT.xml"_s));
    QVERIFY(cash.contains("<TRANNO>NT000003</TRANNO>"));
    desk.exportAll();
    QCOMPARE(readBytes(desk.t.path(u"belge.xml"_s)), document);
    QCOMPARE(readBytes(desk.t.path(u"belge-KASANAKIT.xml"_s)), cash);
    QCOMPARE(desk.storedCounter(), "3\r\n");
    QVERIFY(!desk.fat.pr1.isShown());
    QCOMPARE(desk.fat.pr1.value(), 0);
}

void TestFat::aSourceThatIsGoneExportsHeadsWithoutLines()
{
    Desk desk;
    desk.open(three());
    tick(desk.l1(), {0, 1, 2});
    desk.fat.liste3yukle(u"F1"_s);
    QFile::remove(desk.t.path(u"kaynak.bif"_s));
    desk.exportAll();
    const QByteArray document = readBytes(desk.t.path(u"belge.xml"_s));
    QCOMPARE(document.count("</INVOICE>"), 3);
    QCOMPARE(document.count("<TRANSACTION>"), 0);
}

void TestFat::ticksByEFaturaAndAllAtOnce()
{
    Desk desk;
    InvoiceList &list = desk.fat.liste;
    const auto after = [&](void (InvoiceList::*operation)()) {
        (list.*operation)();
        return ticks(list.l1);
    };
    desk.open(three());
    QCOMPARE(after(&InvoiceList::eolmayan), u"xxx"_s); // no "Evet" at all
    list.l1.setCell(1, L1::EFatura, u"Evet"_s);
    QCOMPARE(after(&InvoiceList::eolan), u"-x-"_s);
    QCOMPARE(after(&InvoiceList::eolmayan), u"x-x"_s);
    QCOMPARE(after(&InvoiceList::fattumsec), u"xxx"_s);
    QCOMPARE(after(&InvoiceList::tumsecimkaldir), u"---"_s);
    list.Check2.setChecked(true);
    QCOMPARE(after(&InvoiceList::check2degisti), u"xxx"_s);
    list.Check2.setChecked(false);
    QCOMPARE(after(&InvoiceList::check2degisti), u"---"_s);
}

void TestFat::theViewsReadAgainAndKeepOneKind()
{
    FakeBoxes boxes;
    int reads = 0;
    InvoiceList *made = nullptr;
    InvoiceList list(QList<GridColumn>(18), boxes, [&] {
        ++reads;
        made->l1.clear();
        for (const QString &mark : {u"Evet"_s, u""_s, u""_s, u"Evet"_s})
            made->l1.setCell(made->l1.addRow(QString::number(made->l1.rows())), L1::EFatura, mark);
        made->listedolu = true;
    });
    made = &list;
    list.efatgoster();
    list.tumgoster();
    QCOMPARE(reads, 0); // an empty list stays empty
    list.l1.addRow(u"x"_s);
    list.efatolmgoster();
    QCOMPARE(reads, 0); // and so does one that no read has filled
    list.listedolu = true;
    list.efatolmgoster();
    QCOMPARE(column(list.l1, L1::CariKodu), u"1,2"_s);
    tick(list.l1, {0});
    list.efatgoster();
    QCOMPARE(column(list.l1, L1::CariKodu), u"0,3"_s);
    QCOMPARE(list.satirSayisi.text(), u"2"_s);
    list.tumgoster();
    QCOMPARE(ticks(list.l1), u"----"_s);
    QCOMPARE(reads, 3);
}

void TestFat::theTitleSearchMindsCaseAndTicksNothing()
{
    Desk desk;
    desk.open(three()); // Ada, Oda ada, ADA
    desk.fat.liste.crara.setText(u"da"_s);
    QCOMPARE(desk.fat.liste.unvanara(), QList<int>({0, 1}));
    desk.fat.liste.crara.setText(u"Ada"_s);
    QCOMPARE(desk.fat.liste.unvanara(), QList<int>({0}));
    QCOMPARE(ticks(desk.l1()), u"---"_s);
}

void TestFat::removingAsksAndKeepsTheNumbersOfTheOthers()
{
    Desk desk;
    InvoiceList &list = desk.fat.liste;
    warning(desk, noTicks);
    list.secilenlerisil(); // an empty list has no ticks either
    desk.open(three());
    warning(desk, noTicks);
    list.secilenlerisil();
    tick(list.l1, {0, 1});
    desk.t.boxes.expectQuestion({reallyRemove, u"DİKKAT"_s, Icon::Question}, false);
    list.secilenlerisil();
    QCOMPARE(ticks(list.l1), u"xx-"_s);
    desk.t.boxes.expectQuestion({reallyRemove, u"DİKKAT"_s, Icon::Question}, true);
    list.secilenlerisil();
    QCOMPARE(column(list.l1, L1::IslemNo), u"NT000003"_s);
    QCOMPARE(list.satirSayisi.text(), u"1"_s);
    desk.t.boxes.verify();
    desk.fat.otomatikac();
    QCOMPARE(column(list.l1, L1::FaturaNumarasi), u"F1,F2,F3"_s);
}

QTEST_GUILESS_MAIN(TestFat)
#include "tst_fat.moc"
