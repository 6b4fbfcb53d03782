// The Düzey invoices at the size of a year: 20 lines an invoice.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_duzey

#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/duzey/fatduzchecks.h"
#include "measure.h"
#include "support/quietdesk.h"
#include "support/workbooks.h"

#include <QCoreApplication>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr int linesOfInvoice = 20;

BookRow recordOf(int record)
{
    const int invoice = record / linesOfInvoice;
    BookRow row{QDate(2024, 1 + invoice % 12, 1 + invoice % 28),
                u"120.01.%1"_s.arg(invoice % 900),
                u"MÜŞTERİ %1"_s.arg(invoice % 900),
                u"IRS-%1"_s.arg(invoice),
                u"DZ%1"_s.arg(invoice, 9, 10, QChar(u'0')),
                u"SATIŞ"_s,
                u"URUN%1"_s.arg(record % 2000),
                1 + record % 40,
                record % 3 ? u"ADET"_s : u"KOLİ"_s,
                3.25 + record % 977};
    for (int rate = 0; rate < 6; ++rate)
        row << (rate < 2 ? BookCell(5 + rate) : BookCell());
    row << 20 << u"DZ%1"_s.arg(invoice % 30) << u"30GUN"_s << u"R"_s << u"B"_s << u"A"_s
        << (record % 10 ? BookCell() : BookCell(0.5));
    return row;
}

// A workbook, and a program folder with the units and persons that it names.
class Desk : public QuietDesk
{
public:
    explicit Desk(int invoices)
    {
        writeWorkbook(source, u"Sheet1"_s, invoices * linesOfInvoice, recordOf);
        OpenDb open(program.db, program.path(u"data.dbs"));
        for (const QString &unit : {u"ADET"_s, u"KOLİ"_s})
            program.db.query(Statement(
                u"insert into birim values (Null,'05','','%1','%1','','','','')"_s.arg(unit)));
        for (int person = 0; person < 30; ++person)
            program.db.query(
                Statement(u"insert into per values (Null,'P%1','DZ%1')"_s.arg(person)));
    }

    QString source = folder.filePath(u"kaynak.xlsx"_s);
    QString target = folder.filePath(u"belge.xml"_s);
};

// A screen over the open workbook, all rows ticked.
class Opened
{
public:
    explicit Opened(Desk &desk)
        : fatduz(desk.program)
    {
        fatduz.load();
        fatduz.dosyaac(desk.source);
        fatduz.liste.fattumsec();
    }
    Fatduz fatduz;
};

// Parses the workbook each time.
void openWorkbook(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    int rows = 0;
    for (auto _ : state)
        rows = Opened(desk).fatduz.liste.l1.rows();
    state.counters["MB"] = megabytes(desk.source);
    state.counters["invoices"] = rows;
}

// The same again while the file has not changed, as at each change of the kind or of a date.
void readAgain(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    Opened open(desk);
    for (auto _ : state)
        open.fatduz.yenidenoku();
}

// All that is said of a list once it was read; it is done in slices beside the work.
void findings(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    Opened open(desk);
    const auto checks = checksOf(open.fatduz);
    for (auto _ : state) {
        checks->restart();
        checks->finish();
    }
    state.counters["findings"] = static_cast<double>(checks->findings().size());
}

void exportAll(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    Opened open(desk);
    for (auto _ : state)
        open.fatduz.kaydet(desk.target);
    state.counters["MB"] = megabytes(desk.target);
    state.counters["peak_MB"] = peakMegabytes();
}

void firstClick(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        Opened open(desk);
        state.ResumeTiming();
        open.fatduz.satirsec(open.fatduz.liste.l1.rows() - 1);
    }
}

void laterClick(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    Opened open(desk);
    for (auto _ : state)
        open.fatduz.satirsec(open.fatduz.liste.l1.rows() - 1);
}

BENCHMARK(openWorkbook)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(readAgain)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(findings)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportAll)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(firstClick)->Arg(5000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(laterClick)->Arg(5000)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
