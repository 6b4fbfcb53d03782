// The card transfers at the size of a whole company: 100,000 cards of each kind, and a tenth of
// them for the ratio.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_cards

#include "cards/cr.h"
#include "cards/stoktrf.h"
#include "measure.h"
#include "support/quietdesk.h"
#include "support/ruler.h"

#include <QCoreApplication>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QByteArray line(const Cr &, int card)
{
    const QString title = u"ÇINAR GIDA, PAZARLAMA VE Ticaret Ltd. Şti. %1"_s.arg(card);
    return ruled(u"CR", 3, u"%1"_s.arg(card, 8, 10, QChar(u'0')), 11, title, 61, u"BURSA");
}

QByteArray line(const Stoktrf &, int card)
{
    return ruled(u"", 25, u"K%1"_s.arg(card, 8, 10, QChar(u'0')), 79,
                 u"Sütlü ÇİKOLATA 60 GR %1"_s.arg(card), 119, u"KUTU", 125,
                 card % 2 == 0 ? u"  0.000" : u" 12.000", 133, u"10");
}

// A program folder and a screen over a read source.
template<class Screen>
class Desk : public QuietDesk
{
public:
    explicit Desk(int cards)
    {
        QFile file(source);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no source");
        for (int card = 0; card < cards; ++card)
            file.write(line(screen, card));
        file.close();
        screen.dosyaac(source);
    }

    Screen screen{program};
    QString source = folder.filePath(u"kaynak.txt"_s);
    QString target = folder.filePath(u"belge.xml"_s);
};

template<class Screen>
void readCards(benchmark::State &state)
{
    Desk<Screen> desk(static_cast<int>(state.range(0)));
    for (auto _ : state)
        desk.screen.dosyaac(desk.source);
    state.counters["MB"] = megabytes(desk.source);
    state.counters["rows"] = desk.screen.l1.rows();
}

template<class Screen>
void writeCards(benchmark::State &state)
{
    Desk<Screen> desk(static_cast<int>(state.range(0)));
    for (auto _ : state)
        desk.screen.kaydet(desk.target);
    state.counters["MB"] = megabytes(desk.target);
    state.counters["peak_MB"] = peakMegabytes();
}

template<class Screen>
void writeBytes(benchmark::State &state)
{
    Desk<Screen> desk(static_cast<int>(state.range(0)));
    desk.screen.kaydet(desk.target);
    writeAgain(state, desk.target);
}

BENCHMARK(readCards<Cr>)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(readCards<Stoktrf>)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeCards<Cr>)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeCards<Stoktrf>)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(writeBytes<Cr>)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeBytes<Stoktrf>)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
