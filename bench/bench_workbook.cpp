// Workbooks at the size of a year's export, into a sheet and from it into a grid.
// build/release/bench/bench_workbook

#include "base/failure.h"
#include "base/grid.h"
#include "measure.h"
#include "support/xlswriter.h"
#include "workbook/workbook.h"

#include <QCoreApplication>
#include <QTemporaryDir>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr int fields = 23;
enum Ending { Xlsx, Xls };

// Codes, titles, dates, moments, prices, truths: every row of 23 filled columns.
BookRow row(int i)
{
    return {QDate(2024, 1, 1).addDays(i % 365),
            u"120.01.%1"_s.arg(i % 5000, 4, 10, QChar(u'0')),
            u"ÇINAR GIDA PAZARLAMA Ltd. Şti. %1"_s.arg(i % 5000),
            u"BLG%1"_s.arg(i),
            {100000 + i / 20, u"00000000"_s},
            u"SATIŞ"_s,
            u"K%1"_s.arg(i % 700),
            i % 48 + 1,
            u"ADET"_s,
            (i % 10000) / 100.0 + 1,
            i % 10,
            i % 7,
            0,
            0,
            0,
            0,
            i % 2 != 0 ? 8 : 18,
            u"P%1"_s.arg(i % 30),
            u"Peşin"_s,
            i % 2 != 0,
            QDateTime(QDate(2024, 1, 1), QTime(0, 0), Qt::UTC).addSecs(i * qint64(61)),
            1234.5678 + i,
            (i % 13) * 0.25};
}

// A workbook that is there while the benchmark runs.
class Book
{
public:
    Book(Ending ending, int rows)
        : path(m_folder.filePath(u"kitap"_s))
    {
        if (ending == Xls)
            writeXls(path, u"Sayfa1"_s, rows, row);
        else
            writeWorkbook(path, u"Sayfa1"_s, rows, row);
    }

private:
    QTemporaryDir m_folder;

public:
    const QString path;
};

void toGrid(const Sheet &sheet, Grid &grid)
{
    const Grid::Refill refill(grid);
    grid.clear();
    for (int i = 0; i < sheet.rows(); ++i) {
        grid.addRow(sheet.text(i, 0));
        for (int field = 1; field < fields; ++field)
            grid.setCell(i, field, sheet.text(i, field));
    }
}

template<Ending ending>
void readIntoSheet(benchmark::State &state)
{
    const Book book(ending, static_cast<int>(state.range(0)));
    resetPeak();
    const double before = peakSinceReset();
    for (auto _ : state)
        benchmark::DoNotOptimize(readSheet(book.path, u"Sayfa1"_s));
    state.counters["MB"] = megabytes(book.path);
    state.counters["more_MB"] = peakSinceReset() - before;
}

template<Ending ending>
void readIntoGrid(benchmark::State &state)
{
    const Book book(ending, static_cast<int>(state.range(0)));
    Grid grid{QList<GridColumn>(fields)};
    for (auto _ : state)
        toGrid(*readSheet(book.path, u"Sayfa1"_s), grid);
    state.counters["rows"] = grid.rows();
}

void askAgain(benchmark::State &state)
{
    const Book book(Xlsx, static_cast<int>(state.range(0)));
    Workbooks workbooks;
    workbooks.sheet(book.path, u"Sayfa1"_s);
    for (auto _ : state)
        benchmark::DoNotOptimize(workbooks.sheet(book.path, u"Sayfa1"_s));
}

#define BENCHMARK_READING(reading, rows)                                                           \
    BENCHMARK(reading)->Arg((rows) / 10)->Arg(rows)->Unit(benchmark::kMillisecond)->UseRealTime()
BENCHMARK_READING(readIntoSheet<Xlsx>, 100000);
BENCHMARK_READING(readIntoGrid<Xlsx>, 100000);
BENCHMARK_READING(readIntoSheet<Xls>, 65000);
BENCHMARK_READING(readIntoGrid<Xls>, 65000);
BENCHMARK(askAgain)->Arg(100000)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
