// The slip transfers at the size of a year's collections: 100,000 rows, and a tenth of them for the
// ratio.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_slips

#include "logoxml/accumulated.h"
#include "measure.h"
#include "support/movements.h"
#include "support/quietdesk.h"

#include <QCoreApplication>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// Every fiftieth title holds a placeholder word, which the next row's filling changes.
QString title(int row)
{
    return row % 50 == 0 ? u"Kolay Alışveriş Ticaret Ltd. Şti. %1"_s.arg(row)
                         : u"ÇINAR GIDA PAZARLAMA VE TİCARET LTD. ŞTİ. %1"_s.arg(row);
}

struct Desk : QuietDesk
{
    explicit Desk(int rows)
        : movements(program, rows, title)
    {
    }
    void write() { movements.write(target); }

    Movements movements;
    QString target = folder.filePath(u"belge.xml"_s);
};

void readMovements(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    qint64 reads = 0;
    for (auto _ : state) {
        state.PauseTiming(); // an unchanged workbook would not be parsed again
        QFile file(desk.movements.source);
        if (!file.open(QIODevice::ReadWrite) ||
            !file.setFileTime(QDateTime::fromMSecsSinceEpoch(++reads * 1000),
                              QFile::FileModificationTime))
            state.SkipWithError("the source can't be changed");
        file.close();
        state.ResumeTiming();
        desk.movements.read();
    }
    state.counters["rows"] = desk.movements.screen.l1.rows();
}

void writeCashSlips(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    for (auto _ : state)
        desk.write();
    state.counters["MB"] = megabytes(desk.target);
    state.counters["peak_MB"] = peakMegabytes();
}

void writeBytes(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    desk.write();
    writeAgain(state, desk.target);
}

// Each value brings three placeholder words, which all later rows change; the text itself grows by
// the square of the rows.
void fillWordsOfTheTemplate(benchmark::State &state)
{
    const QList<QByteArray> words{"saat", "yil", "tutar"};
    const QStringList values{u"9"_s, u"2024"_s, u"tutar saat yil"_s};
    qsizetype written = 0;
    for (auto _ : state) {
        AccumulatedBody body(sablon(u"kasatex"_s), words);
        for (qint64 row = 0; row < state.range(0); ++row)
            body.add(values);
        body.handOverAll([&](QByteArrayView piece) { written += piece.size(); });
    }
    state.SetBytesProcessed(written);
}

BENCHMARK(fillWordsOfTheTemplate)->Arg(350)->Arg(3500)->Unit(benchmark::kMillisecond);
// Neither size fits the processor's cache.
BENCHMARK(readMovements)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeCashSlips)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeBytes)->Arg(200000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
