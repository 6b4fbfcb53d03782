// The card transfers at the size of a whole company: 100,000 cards of each kind, and a tenth of
// them for the ratio.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_cards

#include "app/realports.h"
#include "cards/cr.h"
#include "cards/stoktrf.h"
#include "support/ruler.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

class QuietBoxes : public Boxes
{
public:
    void show(const Box &) override {}
    bool ask(const Box &) override { return true; }
};

class NoDialogs : public FileDialogs
{
public:
    std::optional<QString> openName(const FileQuestion &) override { return std::nullopt; }
    std::optional<QString> saveName(const FileQuestion &) override { return std::nullopt; }
};

QByteArray line(const Cr &, int card)
{
    return Ruler(u"CR")
        .put(3, u"%1"_s.arg(card, 8, 10, QChar(u'0')))
        .put(11, u"ÇINAR GIDA, PAZARLAMA VE Ticaret Ltd. Şti. %1"_s.arg(card))
        .put(61, u"BURSA")
        .line();
}

QByteArray line(const Stoktrf &, int card)
{
    return Ruler()
        .put(25, u"K%1"_s.arg(card, 8, 10, QChar(u'0')))
        .put(79, u"Sütlü ÇİKOLATA 60 GR %1"_s.arg(card))
        .put(119, u"KUTU")
        .put(125, card % 2 == 0 ? u"  0.000" : u" 12.000")
        .put(133, u"10")
        .line();
}

// A program folder and a screen over a read source.
template<class Screen>
class Desk
{
public:
    explicit Desk(int cards)
        : program{.folder = folder.path(),
                  .aktifform = {},
                  .folders = {},
                  .db = {},
                  .boxes = boxes,
                  .dialogs = dialogs,
                  .clock = clock,
                  .sqlServer = server}
        , screen(program)
        , source(folder.filePath(u"kaynak.txt"_s))
        , target(folder.filePath(u"belge.xml"_s))
    {
        QFile file(source);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no source");
        for (int card = 0; card < cards; ++card)
            file.write(line(screen, card));
        file.close();
        screen.dosyaac(source);
    }

    QTemporaryDir folder;
    QuietBoxes boxes;
    NoDialogs dialogs;
    SystemClock clock;
    NoSqlServer server;
    Program program;
    Screen screen;
    QString source;
    QString target;
};

double megabytes(const QString &path)
{
    return static_cast<double>(QFile(path).size()) / 1e6;
}

double peakMegabytes()
{
#ifdef Q_OS_UNIX
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1e3;
#else
    return 0;
#endif
}

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

// What writing costs at the least: the finished document, written again the same safe way.
template<class Screen>
void writeBytes(benchmark::State &state)
{
    Desk<Screen> desk(static_cast<int>(state.range(0)));
    desk.screen.kaydet(desk.target);
    QFile file(desk.target);
    if (!file.open(QIODevice::ReadOnly))
        state.SkipWithError("no document");
    const QByteArray bytes = file.readAll();
    for (auto _ : state) {
        QSaveFile copy(desk.target);
        if (!copy.open(QIODevice::WriteOnly) || copy.write(bytes) != bytes.size() || !copy.commit())
            state.SkipWithError("not written");
    }
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
