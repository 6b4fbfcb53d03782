// The slip transfers at the size of a year's collections: 100,000 rows, and a tenth of them for the
// ratio.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_slips

#include "logoxml/accumulated.h"
#include "measure.h"
#include "slips/slipscreen.h"
#include "support/quietdesk.h"
#include "support/workbooks.h"

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

// A sheet of movements read by the screen, all rows ticked.
class Desk : public QuietDesk
{
public:
    explicit Desk(int rows)
    {
        writeWorkbook(source, u"Sayfa1"_s, rows + 1, [](int row) {
            const QString account = u"120.01.%1"_s.arg(row, 6, 10, QChar(u'0'));
            return BookRow{0.25 + row, {},      {},         u"KASA%1"_s.arg(row % 40),
                           {},         account, title(row), {},
                           {},         {},      {},         u"%1.3.2021"_s.arg(row % 28 + 1)};
        });
        read();
    }
    void read()
    {
        screen.dosyaac(screen.form().files[0], source);
        screen.l1.setAllTicked(true);
        if (screen.l1.isEmpty())
            qFatal("nothing was read");
    }
    void write()
    {
        writeSlips(exeldenkasanakitkaydet(), {screen.l1, {u"100"_s, u"102"_s}}, clock,
                   screen.ilerleme, target);
    }

    QString source = folder.filePath(u"kaynak.xlsx"_s);
    QString target = folder.filePath(u"belge.xml"_s);
    SlipScreen screen{program, cafis()};
};

void readMovements(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    qint64 reads = 0;
    for (auto _ : state) {
        state.PauseTiming(); // an unchanged workbook would not be parsed again
        QFile file(desk.source);
        if (!file.open(QIODevice::ReadWrite) ||
            !file.setFileTime(QDateTime::fromMSecsSinceEpoch(++reads * 1000),
                              QFile::FileModificationTime))
            state.SkipWithError("the source can't be changed");
        file.close();
        state.ResumeTiming();
        desk.read();
    }
    state.counters["rows"] = desk.screen.l1.rows();
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
BENCHMARK(readMovements)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeCashSlips)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeBytes)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
