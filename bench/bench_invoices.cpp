// The road of invoices at the size of a busy month: 20 lines an invoice, 2,000 dealer prices.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_invoices

#include "controls/gridview.h"
#include "invoices/columns.h"
#include "invoices/fat.h"
#include "store/installation.h"
#include "support/bifgenerator.h"

#include <QApplication>
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

constexpr int linesOfInvoice = 20;
constexpr int products = 2000;

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

class SystemClock : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class NoServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        return nullptr;
    }
};

// A program folder with prices and an open invoice file.
class Desk
{
public:
    explicit Desk(int invoices)
        : program{.folder = folder.path(),
                  .aktifform = {},
                  .folders = {},
                  .db = {},
                  .boxes = boxes,
                  .dialogs = dialogs,
                  .clock = clock,
                  .sqlServer = server}
        , fat(program)
        , source(folder.filePath(u"kaynak.bif"_s))
        , target(folder.filePath(u"belge.xml"_s))
    {
        install(folder.path());
        writePrices(program.db, program.path(u"data.dbs"), products);
        writeBif(source, {.invoices = invoices, .lines = linesOfInvoice, .products = products});
        fat.load();
        fat.dosyaac(source);
    }

    QTemporaryDir folder;
    QuietBoxes boxes;
    NoDialogs dialogs;
    SystemClock clock;
    NoServer server;
    Program program;
    Fat fat;
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

// What writing costs at the least: the finished documents, written again the same safe way.
void writeBytes(benchmark::State &state)
{
    Desk desk(static_cast<int>(state.range(0)));
    desk.fat.liste.fattumsec();
    desk.fat.kaydet(desk.target);
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
    list.d1.setDate(QDate(2024, 3, 5));
    list.d2.setDate(QDate(2024, 3, 25));
    for (auto _ : state) {
        fillShown(list.l1, static_cast<int>(state.range(0)));
        view.grab();
        list.fattumsec();
        view.grab();
        list.tarihbelirle();
        view.grab();
    }
}

BENCHMARK(readList)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(readBytes)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(exportAll)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeBytes)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(clickLastRow)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(shownList)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
