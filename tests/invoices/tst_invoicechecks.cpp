// What the invoice screens are checked for. A case (documentcase.h) is a folder of
// tests/data/checks/fat or fatduz: source.bif or source.txt (see bookRows), and
//   data.txt      firma (typed and not clicked with a "?" in front), muh, odeme, fatbilgi, efatura,
//                 as for whole documents; logosuz is without a connection, fiyatsiz what the
//                 reading says of prices; klasor and belge are the target of the automatic save and
//                 that it exists, with icerik in it;
//                 ortak shares the counter; sayfaSonra is the sheet's name after the read
//   expected.txt  a block of findings (level, row of the list or "-", rule, text), one of missing
//                 definitions, and one of what gave no row

#include "desk.h"
#include "duzeydesk.h"

#include "invoices/duzey/fatduzchecks.h"
#include "invoices/fatchecks.h"
#include "support/documentcase.h"
#include "support/findings.h"
#include "support/places.h"

#include <QSignalSpy>

using namespace kervan;

namespace {

QString told(const Finding &finding)
{
    return u"%1 | %2 | %3 | %4"_s.arg(finding.level == Level::Error ? u"hata"_s : u"uyarı"_s,
                                      finding.row < 0 ? u"-"_s : QString::number(finding.row + 1),
                                      finding.rule, finding.text);
}

QString told(const Gap &gap)
{
    return u"%1 %2 (%3): %4 satır, %5 fatura, %6"_s.arg(gap.kind, gap.code, gap.name)
        .arg(gap.lines)
        .arg(gap.documents)
        .arg(gap.screen);
}

QString told(const ReadReport::Entry &entry)
{
    return u"%1 %2 %3"_s.arg(entry.line).arg(entry.cell, entry.reason).simplified();
}

template<class List>
QStringList allTold(const List &list)
{
    QStringList lines;
    for (const auto &one : list)
        lines << told(one);
    return lines;
}

// The names of the rules, each once.
QString rulesTold(const QList<Finding> &findings)
{
    QStringList rules;
    for (const Finding &finding : findings)
        rules << finding.rule;
    rules.removeDuplicates();
    rules.sort();
    return rules.join(u", "_s);
}

QStringList textsOf(const QList<Finding> &findings)
{
    QStringList texts;
    for (const Finding &finding : findings)
        texts << finding.text;
    return texts;
}

QList<Finding> surveyed(Survey &survey)
{
    survey.begin();
    while (survey.step()) {
    }
    QList<Finding> findings;
    QList<Gap> gaps;
    survey.tell(findings, gaps);
    return findings;
}

// A finding of every screen over a fresh folder leads to what is done about it.
void compare(const DocumentCase &given, const Checks &checks, const ReadReport &okuma,
             const QString &folder)
{
    const QStringList told = allTold(checks.findings()) + QStringList{QString()} +
                             allTold(checks.gaps()) + QStringList{QString()} +
                             allTold(okuma.entries());
    const QString text = told.join(u'\n').replace(folder, u"KLASÖR"_s) + u'\n';
    QCOMPARE(text.split(u'\n'), given.text(u"expected.txt"_s).split(u'\n'));
    for (const Finding &finding : checks.findings())
        QVERIFY2(!finding.cure.isEmpty(), qPrintable(finding.rule));
}

void choose(const DocumentCase &given, InvoiceDefinitions &tanimlar)
{
    tanimlar.firma.setText(given[u"firma"_s]);
    if (!tanimlar.firma.text().startsWith(u'?'))
        tanimlar.firmasec();
}

void expectNoLink(TestProgram &t)
{
    t.boxes.expect(
        {u"SQL Server bağlantısı yok. E-Fatura Okunurken Hata Oluştu"_s, u"Dikkat"_s, Icon::Stop});
}

// A document of an earlier day.
void lay(const QString &path, const QDateTime &time)
{
    writeBytes(path, "<SALES_INVOICES>");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

void choose(const DocumentCase &given, Fat &fat)
{
    choose(given, fat.tanimlar);
    fat.kdvOrani.setText(given[u"muh"_s]);
    fat.kdvoranisec();
    fat.odemePlani.setText(given[u"odeme"_s]);
    fat.odemeplanisec();
}

// A case, read and checked.
struct SapCase
{
    TestProgram t;
    DocumentCase given;
    Fat fat{t.program};
    InvoiceHooks hooks;
    std::unique_ptr<Checks> checks;

    explicit SapCase(const QString &folder)
        : given(t, u"data.dbs"_s, folder)
    {
        if (given[u"logosuz"_s].isEmpty())
            given.markEInvoices(t);
        const QString target = given[u"klasor"_s].isEmpty() ? u"belge.xml"_s : given[u"klasor"_s];
        t.fill({u"Update yol set xf = '%1' Where id='1'"_s.arg(target)});
        fat.load();
        hooks = {[this] { return given[u"ortak"_s] == u"1"; },
                 [this, target](const QString &path) {
                     return path == t.path(target) ? given[u"icerik"_s] : QString();
                 }};
        checks = checksOf(fat, hooks);
        choose(given, fat);
        if (!given[u"belge"_s].isEmpty())
            lay(t.path(target), QDateTime(QDate(2024, 3, 6), QTime(18, 30)));
        if (!given[u"fiyatsiz"_s].isEmpty())
            t.boxes.expect({.text = noPrices + u"  "_s + given[u"fiyatsiz"_s]});
        if (given.expected(u"source.bif"_s).size() == 1) {
            if (!given[u"logosuz"_s].isEmpty())
                expectNoLink(t);
            fat.dosyaac(given.path(u"source.bif"_s));
        }
        checks->finish();
    }
};

struct SheetCase
{
    TestProgram t;
    DocumentCase given;
    Fatduz fatduz{t.program};
    std::unique_ptr<Checks> checks;

    explicit SheetCase(const QString &folder)
        : given(t, u"data.dbs"_s, folder)
    {
        if (given[u"logosuz"_s].isEmpty())
            given.markEInvoices(t);
        writeBytes(t.path(u"kasa.kvz"_s), "K100");
        fatduz.load();
        checks = checksOf(fatduz);
        choose(given, fatduz.tanimlar);
        if (given.expected(u"source.txt"_s).size() == 1) {
            writeWorkbook(t.path(u"kaynak.xlsx"_s), u"Sheet1"_s,
                          bookRows(given.text(u"source.txt"_s)));
            if (!given[u"logosuz"_s].isEmpty())
                expectNoLink(t);
            fatduz.dosyaac(t.path(u"kaynak.xlsx"_s));
        }
        if (!given[u"sayfaSonra"_s].isEmpty())
            fatduz.sayfaAdi.setText(given[u"sayfaSonra"_s]);
        checks->finish();
    }
};

} // namespace

class TestInvoiceChecks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theFindingsOfAnInvoiceFileAreTheListedOnes_data()
    {
        DocumentCase::addAll(u"checks/fat"_s);
    }
    void theFindingsOfAnInvoiceFileAreTheListedOnes()
    {
        QFETCH(const QString, folder);
        SapCase sap(folder);
        compare(sap.given, *sap.checks, sap.fat.okuma, sap.t.folder.path());
    }

    void theFindingsOfASheetAreTheListedOnes_data() { DocumentCase::addAll(u"checks/fatduz"_s); }
    void theFindingsOfASheetAreTheListedOnes()
    {
        QFETCH(const QString, folder);
        SheetCase sheet(folder);
        compare(sheet.given, *sheet.checks, sheet.fatduz.okuma, sheet.t.folder.path());
    }

    // What the rules find in the sources of all expected documents, a folder a line.
    void theSourcesOfDocumentsHaveTheListedFaults_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("rules");
        for (const QString &line :
             rowsOf(QString::fromUtf8(readBytes(testData(u"checks/belgeler.txt"_s)))))
            QTest::newRow(qPrintable(line.section(u':', 0, 0)))
                << testData(line.section(u':', 0, 0)) << line.section(u':', 1).trimmed();
    }
    void theSourcesOfDocumentsHaveTheListedFaults()
    {
        QFETCH(const QString, folder);
        QFETCH(const QString, rules);
        TestProgram t;
        const DocumentCase given(t);
        given.markEInvoices(t);
        writeBytes(t.path(u"kasa.kvz"_s), "K100");
        QString told;
        if (folder.contains(u"fatura/"_s)) {
            Fat fat(t.program);
            fat.load();
            choose(given, fat);
            const auto checks = checksOf(fat);
            fat.dosyaac(given.path(u"source.bif"_s));
            checks->finish();
            told = rulesTold(checks->findings());
        } else {
            Fatduz fatduz(t.program);
            fatduz.load();
            choose(given, fatduz.tanimlar);
            fatduz.faturaTuru.setText(given[u"fatbilgi"_s]);
            const auto checks = checksOf(fatduz);
            const QString sheet = given[u"sayfa"_s].isEmpty() ? u"Sheet1"_s : given[u"sayfa"_s];
            fatduz.sayfaAdi.setText(sheet);
            writeWorkbook(t.path(u"kaynak.xlsx"_s), sheet, bookRows(given.text(u"source.txt"_s)));
            fatduz.dosyaac(t.path(u"kaynak.xlsx"_s));
            checks->finish();
            told = rulesTold(checks->findings());
        }
        QCOMPARE(told, rules);
    }

    void eachRuleOfTheInvoiceScreensIsPlantedSomewhere()
    {
        RulesSetOff sap;
        for (const QString &folder : DocumentCase::foldersOf(u"checks/fat"_s)) {
            SapCase planted(folder);
            sap.ask(rulesOf(planted.fat, planted.hooks), planted.fat.liste.l1);
        }
        RulesSetOff sheets;
        for (const QString &folder : DocumentCase::foldersOf(u"checks/fatduz"_s)) {
            SheetCase planted(folder);
            sheets.ask(rulesOf(planted.fatduz), planted.fatduz.liste.l1);
        }
        TestProgram t; // no list, as whatTheOpeningCouldNotReadIsTold() has it
        writeBytes(t.path(u"kasa.kvz"_s), "K100");
        QVERIFY(QFile::remove(t.path(u"fatozkod.dbs"_s)));
        Fat fat(t.program);
        Fatduz fatduz(t.program);
        const auto askBoth = [&] {
            fat.load();
            fatduz.load();
            sap.ask(rulesOf(fat), fat.liste.l1);
            sheets.ask(rulesOf(fatduz), fatduz.liste.l1);
        };
        askBoth();
        QVERIFY(QFile::remove(t.path(u"data.dbs"_s)));
        askBoth();
        const FolderAway away(t);
        sap.ask(rulesOf(fat), fat.liste.l1);
        sheets.ask(rulesOf(fatduz), fatduz.liste.l1);
        QCOMPARE(sap.missing().join(u", "_s), QString());
        QCOMPARE(sheets.missing().join(u", "_s), u"cari kodu l1 1"_s); // such a record gives no row
    }

    void whatTheOpeningCouldNotReadIsTold()
    {
        TestProgram t;
        QVERIFY(QFile::remove(t.path(u"fatozkod.dbs"_s)));
        t.reachLogo();
        Fat codeless(t.program);
        codeless.load();
        const auto first = checksOf(codeless);
        first->finish();
        QCOMPARE(rulesTold(first->findings()),
                 u"firma, kasa kodu, kdv satırı, ödeme planı, özel kodlar"_s);
        QVERIFY(QFile::remove(t.path(u"data.dbs"_s)));
        codeless.yukle();
        first->finish();
        QCOMPARE(rulesTold(first->findings()),
                 u"firma, kasa kodu, kdv satırı, tanımlar, veritabanı, ödeme planı"_s);
    }

    void aSourceThatIsGoneIsToldOnceAndLinesOfNoneAreNot()
    {
        Desk desk;
        desk.open(header() + goods(u"P1"));
        QVERIFY(QFile::remove(desk.fat.dosyaadi()));
        const auto survey = surveyOf(desk.fat);
        QCOMPARE(rulesTold(surveyed(*survey)), u"kaynak"_s);
    }

    void linesBeyondSixtyThousandAreLost()
    {
        Desk desk;
        QByteArray bif = header({.no = u"F1"_s});
        for (int line = 0; line < 60'000; ++line)
            bif += goods(u"P1"_s);
        bif += header({.no = u"F2"_s}) + goods(u"P1"_s);
        desk.open(bif);
        const auto survey = surveyOf(desk.fat);
        QVERIFY(!rulesTold(surveyed(*survey)).contains(u"satır sınırı"));
        bif.insert(bif.indexOf("@6"), goods(u"P1"_s));
        desk.open(bif);
        QVERIFY(rulesTold(surveyed(*survey)).contains(u"satır sınırı"));
    }

    void recordsBeyondSixtyThousandAreLost()
    {
        DuzeyDesk desk;
        desk.open(QList<Record>(60'001));
        QCOMPARE(rulesTold(surveyed(*surveyOf(desk.fatduz))), u"satır sınırı"_s);
    }

    // Invoices that share their lines, and one whose records stand apart, come by turns.
    void aDefinitionIsMissedByAnInvoiceOnce()
    {
        Desk desk;
        desk.t.boxes.expect({.text = noPrices + u"  P9  P9"_s});
        desk.open(header({.no = u"F1"_s}) + header({.no = u"F2"_s}) + goods(u"P9"_s) +
                  goods(u"P9"_s));
        const auto shared = checksOf(desk.fat);
        shared->finish();
        QVERIFY(allTold(shared->gaps())
                    .contains(u"Bayi fiyatı P9 (Ürün): 2 satır, 2 fatura, urunform"_s));
        DuzeyDesk duzey;
        duzey.t.fill({u"delete from birim"_s});
        duzey.open({{.no = u"F1"_s}, {.no = u"F2"_s}, {.no = u"F1"_s}, {.no = u"F2"_s}});
        const auto split = checksOf(duzey.fatduz);
        duzey.fatduz.yukle();
        split->finish();
        QVERIFY(allTold(split->gaps())
                    .contains(u"Birim ADET (): 4 satır, 4 fatura, birimseti"_s)); // its parts
    }

    // The list is another while its lines are walked: what was found of the rows before is dropped,
    // and none of them is told.
    void aListThatChangesInTheMidstOfItsCheckIsCheckedAnew()
    {
        Desk desk;
        QByteArray bif;
        for (int no = 1; no <= 3000; ++no)
            bif += header({.no = QString::number(no), .person = no == 2900 ? u"S9"_s : u"S1"_s}) +
                   goods(no % 1000 == 0 ? u"P&1"_s : u"P1"_s);
        desk.t.boxes.expect({.text = noPrices + u"  P&1  P&1  P&1"_s});
        const auto checks = checksOf(desk.fat);
        desk.open(bif);
        int turns = 0;
        while (checks->gaps().isEmpty() && !checks->isComplete() && turns < 3) {
            QCoreApplication::processEvents();
            ++turns;
        }
        QVERIFY(!checks->isComplete());
        desk.l1.keepWhere([](int row) { return row >= 1999; });
        QTRY_VERIFY(checks->isComplete());
        QStringList rows;
        for (const Finding &finding : checks->findings()) {
            if (finding.row >= 0 && finding.rule != u"satır toplamı")
                rows << u"%1 %2"_s.arg(finding.row + 1).arg(finding.rule);
        }
        QCOMPARE(rows.join(u", "_s), u"1 bayi fiyatı, 1 XML işareti, 901 personel, 1001 bayi "
                                     "fiyatı, 1001 XML işareti"_s);
        QCOMPARE(checks->ofRow(900).size(), 2);

        // A tick changes nothing that is checked; a definition that comes later does.
        QSignalSpy changed(checks.get(), &Checks::changed);
        desk.fat.liste.fattumsec();
        QCoreApplication::processEvents();
        QCOMPARE(changed.count(), 0);
        desk.t.fill({u"insert into per values (Null,'LP9','S9')"_s});
        desk.fat.yukle();
        QTRY_VERIFY(changed.count() > 0 && checks->isComplete());
        QVERIFY(textsOf(checks->findings())
                    .contains(u"2900: \"S9\" personelinin Logo kodu okumadan sonra tanımlandı."_s));
        desk.l1.clear();
        QTRY_VERIFY(checks->isComplete());
        QVERIFY(checks->ofRow(0).isEmpty() && checks->gaps().isEmpty());
    }

    void aRuleThatFailsFindsNothing()
    {
        Grid list({{u"a"_s}});
        list.addRow(u"x"_s);
        Checks checks(list, {{.name = u"yok"_s,
                              .ofRow =
                                  [&list](int row) {
                                      return list.cell(row, 7);
                                  }},
                             {.name = u"var"_s, .ofRow = [](int) {
                                  return u"bulundu"_s;
                              }}});
        checks.finish();
        QCOMPARE(rulesTold(checks.findings()), u"var"_s);
    }

    void aReportKeepsBoundsAndCountsOn()
    {
        ReadReport report;
        report.begin(u"kaynak"_s);
        for (int line = 1; line <= 6000; ++line)
            report.add(line, u"kayıt", u"neden %1"_s.arg(line <= 3000 ? 0 : line));
        QCOMPARE(report.total(), 6000);
        QCOMPARE(report.entries().size(), ReadReport::mostEntries);
        QCOMPARE(report.reasons().size(), ReadReport::mostReasons + 1);
        QCOMPARE(report.reasons().first().second, 3000);
        QCOMPARE(report.reasons().last(), std::pair(u"başka nedenler"_s, 6000 - 3000 - 199));
    }
};

QTEST_GUILESS_MAIN(TestInvoiceChecks)
#include "tst_invoicechecks.moc"
