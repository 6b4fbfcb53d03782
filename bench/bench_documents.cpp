// Documents read back at the size of years: 1 GB of invoices in ten files, and 20,000 rows of a
// list looked for among them.
// QT_QPA_PLATFORM=offscreen build/release/bench/bench_documents

#include "check/documentreader.h"
#include "check/readback.h"
#include "check/writtendocuments.h"
#include "invoices/invoicedocument.h"
#include "measure.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// A document of so many invoices of ten lines, some 15 KB each; every hundredth holds a "&".
void writeInvoices(const QString &path, int first, int count)
{
    InvoiceDocument document(u"10"_s, sapTemplates());
    InvoiceGoods goods;
    goods.miktar = u"12.00"_s;
    goods.birimFiyat = u"9.725424"_s;
    goods.kdv = u"18"_s;
    goods.birim = u"PK"_s;
    goods.ekVergiTutari = u"4.5"_s;
    belgeyaz(document.frame(), DocumentEnd::LineEnd, path, [&](const TakePiece &take) {
        for (int i = first; i < first + count; ++i) {
            InvoiceHead head;
            head.cariKod = i % 100 == 0 ? u"C&%1"_s.arg(i) : u"120.01.%1"_s.arg(i);
            head.faturaNo = u"KRV2024%1"_s.arg(i, 8, 10, QChar(u'0'));
            head.belgeTarihi = u"%1.03.2024"_s.arg(i % 28 + 1, 2, 10, QChar(u'0'));
            head.an = QDateTime(QDate(2024, 3, 7), QTime(9, 5));
            document.beginInvoice(head);
            for (int line = 0; line < 10; ++line) {
                goods.urunKodu = u"URUN%1"_s.arg(line);
                document.addLine(goods);
            }
            take(" ");
            take(document.endInvoice());
        }
        take(" ");
    });
}

constexpr int invoicesOfFile = 6'000;

struct Years
{
    QTemporaryDir folder;
    double megabytesOfAll = 0;

    explicit Years(int files)
    {
        for (int i = 0; i < files; ++i) {
            const QString path = folder.filePath(u"fatura%1.xml"_s.arg(i));
            writeInvoices(path, i * invoicesOfFile, invoicesOfFile);
            megabytesOfAll += megabytes(path);
        }
    }
};

void readOne(benchmark::State &state)
{
    const Years years(1);
    const QString path = years.folder.filePath(u"fatura0.xml"_s);
    qint64 records = 0;
    for (auto _ : state) {
        const auto reading = readDocument(path, [](const DocumentRecord &) {});
        records = reading.records;
        if (!reading.isFine())
            state.SkipWithError("not read");
    }
    state.counters["records"] = double(records);
    state.counters["MB"] = years.megabytesOfAll;
    state.SetBytesProcessed(state.iterations() * qint64(years.megabytesOfAll * 1e6));
}

// As the program does it: a thread beside the work, from the folder's list to the marks.
void readFolder(benchmark::State &state)
{
    const Years years(static_cast<int>(state.range(0)));
    Grid list{QList<GridColumn>(4)};
    for (int i = 0; i < 20'000; ++i) {
        const int row = list.addRow(u"KRV2024%1"_s.arg(i * 3, 8, 10, QChar(u'0')));
        list.setCell(row, 1, u"%1.03.2024"_s.arg(i * 3 % 28 + 1, 2, 10, QChar(u'0')));
        list.setCell(row, 2, u"120.01.%1"_s.arg(i * 3));
        list.setCell(row, 3, u"1.385,2122"_s);
    }
    int marked = 0;
    double resting = 0;
    for (auto _ : state) {
        resetPeak();
        const double before = peakMegabytes();
        WrittenDocuments written;
        written.setRows({.grid = &list,
                         .family = DocumentFamily::Invoices,
                         .kind = u"8"_s,
                         .number = 0,
                         .date = 1,
                         .customer = 2,
                         .amount = 3});
        written.setFolders({years.folder.path()});
        QElapsedTimer asleep;
        while (written.isReading())
            QCoreApplication::processEvents(); // waiting for more would not end on Windows
        marked = written.markedCount();
        asleep.start();
        written.setRows({.grid = &list,
                         .family = DocumentFamily::Invoices,
                         .kind = u"8"_s,
                         .number = 0,
                         .date = 1,
                         .customer = 2,
                         .amount = 3});
        state.counters["marking_ms"] = double(asleep.nsecsElapsed()) / 1e6;
        resting = peakMegabytes() - before;
    }
    state.counters["marked"] = marked;
    state.counters["MB"] = years.megabytesOfAll;
    state.counters["memory_MB"] = resting;
}

} // namespace

BENCHMARK(readOne)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(readFolder)->Arg(10)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(2);

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
