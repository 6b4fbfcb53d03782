// What one question to Logo costs: driver, loopback and a stand-in for the server, whose own share
// is shown beside it. build/release/bench/bench_link

#include "odbc/odbcserver.h"
#include "support/tds/tdsstandin.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr int cards = 10'000;

QString question(int card)
{
    return u"Select * from LG_001_CLCARD where CODE='%1'"_s.arg(card);
}

void fillCards(TdsStandin &server)
{
    fillLogo(server, 1);
    server.run(u"insert into LG_001_CLCARD with recursive n(i) as (select 0 union all select i + 1 "
               "from n where i < %1) select i, i, 'CARI ' || i, 1 from n"_s.arg(cards));
}

std::unique_ptr<SqlConnection> connectTo(const TdsStandin &server)
{
    OdbcServer odbc; // as the windows ask it
    odbc.waitBy([](const auto &hasCome) { return hasCome(std::chrono::hours(1)); });
    return odbc.connect(
        u"Server=%1;UID=%2;PWD=%3;database=%4;"_s.arg(server.server(), TdsStandin::user,
                                                      TdsStandin::password, TdsStandin::database),
        {.commandTimeout = 0, .connectionTimeout = 5});
}

void lookUp(benchmark::State &state)
{
    TdsStandin server;
    fillCards(server);
    const auto connection = connectTo(server);
    int card = 0;
    for (auto _ : state) {
        if (connection->run(Statement(question(card++ % cards))).isEmpty())
            state.SkipWithError("no card");
    }
}

void lookUpInTheServer(benchmark::State &state)
{
    TdsStandin server;
    fillCards(server);
    int card = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(server.run(question(card++ % cards)));
}

void connectAndLeave(benchmark::State &state)
{
    const TdsStandin server;
    for (auto _ : state)
        connectTo(server);
}

BENCHMARK(lookUp)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(lookUpInTheServer)->UseRealTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(connectAndLeave)->UseRealTime()->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
