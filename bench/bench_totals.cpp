// What a tick costs that is summed up, in a list of a very busy month: 20,000 invoices.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_totals

#include "check/tickoffer.h"
#include "check/totals.h"
#include "invoices/columns.h"
#include "measure.h"

#include <QCoreApplication>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr int rows = 20000;

ListShape shape()
{
    return {.what = u"fatura"_s,
            .number = L1::FaturaNumarasi,
            .amounts = {L1::GenelToplam, L1::ToplamTutar, L1::IndirimToplami, L1::KdvToplami}};
}

void fill(Grid &list)
{
    const Grid::Refill refill(list);
    list.clear();
    for (int i = 0; i < rows; ++i) {
        const int row = list.addRow(u"120.01.%1"_s.arg(i % 900));
        list.setCell(row, L1::FaturaNumarasi, u"F%1"_s.arg(i));
        for (const int column : shape().amounts)
            list.setCell(row, column, u"1.2%1,%2"_s.arg(10 + i % 90).arg(10 + i % 89));
    }
}

struct List
{
    Grid rows{invoiceColumns(u"Ünvanı"_s, u"Personel"_s), Grid::Tickable};

    List() { fill(rows); }
};

void tickOne(benchmark::State &state)
{
    List list;
    const Totals totals(list.rows, &shape);
    list.rows.setAllTicked(true);
    bool ticked = false;
    for (auto _ : state) {
        list.rows.setTicked(rows / 2, ticked);
        benchmark::DoNotOptimize(totals.told());
        ticked = !ticked;
    }
}

void tickAll(benchmark::State &state)
{
    List list;
    const Totals totals(list.rows, &shape);
    bool ticked = true;
    for (auto _ : state) {
        list.rows.setAllTicked(ticked);
        benchmark::DoNotOptimize(totals.told());
        ticked = !ticked;
    }
}

void selectAll(benchmark::State &state)
{
    List list;
    const Totals totals(list.rows, &shape);
    for (auto _ : state)
        benchmark::DoNotOptimize(totals.of({{0, rows - 1}}));
}

// Of a list that was ticked whole: the ticks are remembered, the list filled, the offer reckoned.
void readAgain(benchmark::State &state)
{
    List list;
    std::optional<TickOffer> offer;
    if (state.range(0) > 0)
        offer.emplace(list.rows, &shape);
    for (auto _ : state) {
        list.rows.setAllTicked(true);
        fill(list.rows);
        if (offer)
            benchmark::DoNotOptimize(offer->rows());
    }
}

void memory(benchmark::State &state)
{
    const double before = peakMegabytes();
    List list;
    const double ofList = peakMegabytes();
    const Totals totals(list.rows, &shape);
    const TickOffer offer(list.rows, &shape);
    for (auto _ : state) {
        list.rows.setAllTicked(true);
        fill(list.rows);
        benchmark::DoNotOptimize(offer.rows());
        benchmark::DoNotOptimize(totals.told());
    }
    state.counters["list_MB"] = ofList - before;
    state.counters["beside_MB"] = peakMegabytes() - ofList;
}

} // namespace

BENCHMARK(memory)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(tickOne)->Unit(benchmark::kMicrosecond);
BENCHMARK(tickAll)->Unit(benchmark::kMillisecond);
BENCHMARK(selectAll)->Unit(benchmark::kMillisecond);
BENCHMARK(readAgain)->ArgName("offered")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
