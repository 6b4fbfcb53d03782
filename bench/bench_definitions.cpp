// Opening a definition screen over a full table: 5,000 payment plans.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_definitions

#include "store/screens/definitionwindow.h"
#include "support/quietdesk.h"

#include <QApplication>

#include <benchmark/benchmark.h>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

void openScreen(benchmark::State &state)
{
    QuietDesk desk;
    {
        OpenDb open(desk.program.db, desk.program.path(u"data.dbs"));
        for (int row = 0; row < state.range(0); ++row) {
            desk.program.db.query(Statement(u"insert into odm values (Null ,'")
                                      .value(QString::number(row))
                                      .text(u"','GÜN','','','','','','')"));
        }
    }
    for (auto _ : state) {
        DefinitionWindow window(desk.program, *definitionOf(u"odmplan"_s));
        window.show();
        window.grab();
    }
}

BENCHMARK(openScreen)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
