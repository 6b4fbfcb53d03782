// The road of invoices at the size of a busy month: 20 lines an invoice, 2,000 dealer prices.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_invoices

#include "check/readback.h"
#include "controls/gridview.h"
#include "invoices/columns.h"
#include "invoices/fat.h"
#include "invoices/fatchecks.h"
#include "measure.h"
#include "support/bifgenerator.h"
#include "support/quietdesk.h"

#include <QApplication>

#include <algorithm>
#include <ctime>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr int linesOfInvoice = 20;
constexpr int products = 2000;

// A program folder with prices and an open invoice file.
class Desk : public QuietDesk
{
public:
    explicit Desk(int invoices)
    {
        writePrices(program.db, program.path(u"data.dbs"), products);
        writeBif(source, {.invoices = invoices, .lines = linesOfInvoice, .products = products});
        fat.load();
        fat.dosyaac(source);
    }

    Fat fat{program};
    QString source = folder.filePath(u"kaynak.bif"_s);
    QString target = folder.filePath(u"belge.xml"_s);
};

void readList(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state)
        desk.fat.umurlarfaturabaslikoku();
    state.counters["MB"] = megabytes(desk.source);
}

// What reading costs at the least: the same bytes, taken in and looked at once.
void readBytes(benchmark::State &state)
{
    const Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        QFile file(desk.source);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("no source");
        benchmark::DoNotOptimize(file.readAll().count('\n'));
    }
}

// All that is said of a list once it was read; it is done in slices beside the work.
void findings(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    const auto checks = checksOf(desk.fat);
    for (auto _ : state) {
        checks->restart();
        checks->finish();
    }
    state.counters["findings"] = static_cast<double>(checks->findings().size());
}

// The longest that a slice holds the program up, in time of the processor.
void longestSlice(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    const auto checks = checksOf(desk.fat);
    std::clock_t longest = 0;
    for (auto _ : state) {
        checks->restart();
        while (!checks->isComplete()) {
            const std::clock_t start = std::clock();
            QCoreApplication::processEvents(); // waiting for more would not end on Windows
            longest = std::max(longest, std::clock() - start);
        }
    }
    state.counters["longest_ms"] = static_cast<double>(longest) * 1e3 / CLOCKS_PER_SEC;
}

// Reading with the checks at the list, which wait for it to end.
void readCheckedList(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    const auto checks = checksOf(desk.fat);
    for (auto _ : state)
        desk.fat.umurlarfaturabaslikoku();
}

void exportAll(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    desk.fat.liste.fattumsec();
    const double before = peakMegabytes();
    for (auto _ : state)
        desk.fat.kaydet(desk.target);
    state.counters["MB"] = megabytes(desk.target);
    state.counters["peak_before_MB"] = before;
    state.counters["peak_MB"] = peakMegabytes();
}

// The same with the checks at the list, and with the document that is read back behind it.
void exportChecked(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    const auto checks = checksOf(desk.fat);
    desk.fat.liste.fattumsec();
    checks->finish();
    for (auto _ : state) {
        desk.fat.kaydet(desk.target);
        state.PauseTiming();
        checks->finish();
        state.ResumeTiming();
    }
    const Grid &l1 = desk.fat.liste.l1;
    const auto readBackTakes = std::clock();
    const bool agrees = readBack(desk.target, writtenRows(l1, DocumentFamily::Invoices, true,
                                                          L1::FaturaNumarasi, L1::ToplamTutar))
                            .agrees;
    state.counters["read_back_ms"] =
        static_cast<double>(std::clock() - readBackTakes) * 1e3 / CLOCKS_PER_SEC;
    state.counters["agrees"] = agrees;
}

void writeBytes(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    desk.fat.liste.fattumsec();
    desk.fat.kaydet(desk.target);
    writeAgain(state, desk.target);
}

void clickLastRow(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state)
        desk.fat.satirsec(desk.fat.liste.l1.rows() - 1);
}

void fillShown(Grid &grid, int rows)
{
    const Grid::Refill refill(grid);
    grid.clear();
    for (int row = 0; row < rows; ++row) {
        grid.addRow(QString::number(row));
        grid.setCell(row, L1::FaturaTarihi, u"%1.03.2024"_s.arg(1 + row % 28, 2, 10, QChar(u'0')));
        grid.setCell(row, L1::KasaSatisElemani, u"PER01"_s);
    }
}

// Filling, ticking and filtering a list that is shown, drawn each time.
void shownList(benchmark::State &state)
{
    Desk desk(1);
    InvoiceList &list = desk.fat.liste;
    GridView view(list.l1, u"l1"_s);
    view.resize(1200, 600);
    view.show();
    list.ilkTarih.setDate(QDate(2024, 3, 5));
    list.sonTarih.setDate(QDate(2024, 3, 25));
    for (auto _ : state) {
        fillShown(list.l1, static_cast<int>(state.range(0)));
        view.grab();
        list.fattumsec();
        view.grab();
        list.tarihbelirle();
        view.grab();
    }
}

BENCHMARK(readList)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(readCheckedList)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(findings)->Arg(1000)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(longestSlice)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(readBytes)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportAll)
    ->Arg(1000)
    ->Arg(5000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(exportChecked)->Arg(5000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeBytes)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(clickLastRow)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(shownList)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
