// What each road costs for n, 2n and 4n of what it reads: a program that is run once for each case,
// so that an instrument can count the instructions of `measured` alone. tools/cost runs them all.
// build/release/bench/kervan-cost              lists the cases
// build/release/bench/kervan-cost CASE [K]     carries it out at its three sizes, or K times those,
//                                              and tells the time of the processor

#include "cards/cardchecks.h"
#include "cards/cr.h"
#include "cards/stoktrf.h"
#include "check/documentreader.h"
#include "check/readback.h"
#include "check/tickoffer.h"
#include "check/totals.h"
#include "check/writtendocuments.h"
#include "controls/gridview.h"
#include "invoices/columns.h"
#include "invoices/duzey/fatduz.h"
#include "invoices/duzey/fatduzchecks.h"
#include "invoices/fat.h"
#include "invoices/fatchecks.h"
#include "slips/slipchecks.h"
#include "stocktake/countchecks.h"
#include "stocktake/sayimform.h"
#include "stocktake/urunform.h"
#include "support/bifgenerator.h"
#include "support/movements.h"
#include "support/quietdesk.h"
#include "support/ruler.h"
#include "support/workbooks.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <memory>

using namespace kervan;
using namespace Qt::StringLiterals;

/// The instrument counts what stands inside it.
extern "C" [[gnu::noinline]] void measured(const std::function<void()> &step)
{
    step();
    asm volatile(""); // not a mere jump, which would leave nothing to count in
}

namespace {

using Step = std::function<void()>;

// A Logo that knows every card and barcode, without a line between.
class NearConnection : public SqlConnection
{
public:
    bool isOpen() const override { return true; }

protected:
    SqlRows send(const QString &) override
    {
        return {{u"ACCEPTEINV"_s, u"ITEMKOD"_s, u"BIRIMKOD"_s}, {{u"1"_s, u"KOD"_s, u"ADET"_s}}};
    }
};

class NearServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        return std::make_unique<NearConnection>();
    }
};

struct Desk
{
    QuietDesk quiet;
    NearServer server;
    Program program{quiet.folder.path(), {},          {},    {}, quiet.boxes,
                    quiet.dialogs,       quiet.clock, server};
    QString source = quiet.folder.filePath(u"kaynak"_s);
    QString target = quiet.folder.filePath(u"belge.xml"_s);

    Desk()
    {
        writeText(program.path(u"sqlbaglan.kvz"), "S\r\nsa\r\ns\r\nDB\r\n1- FİRMA\r\n");
        writeText(program.path(u"kasacariislemno.kvz"), "0\r\n");
        writeText(program.path(u"bankacariislemno.kvz"), "0\r\n");
    }
    static void writeText(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            qFatal("not written");
    }
    void query(const QStringList &statements)
    {
        const OpenDb open(program.db, program.path(u"data.dbs"));
        const TogetherInDb together(program.db);
        for (const QString &statement : statements)
            program.db.query(Statement(statement));
    }
};

QString digits(int number, int width)
{
    return u"%1"_s.arg(number, width, 10, QChar(u'0'));
}

// --- SAP invoices

struct SapDesk : Desk
{
    enum Prices { AllPriced, NonePriced };
    Fat fat{program};

    explicit SapDesk(int invoices, Prices prices = AllPriced)
    {
        const int products = invoices;
        if (prices == AllPriced) {
            QStringList statements;
            for (int product = 0; product < products; ++product)
                statements << u"insert into urun values ('URN%1','','','4,20')"_s.arg(
                    digits(product, 6));
            query(statements);
        }
        writeBif(source, {.invoices = invoices, .lines = 5, .products = products});
        fat.load();
        fat.dosyaac(source);
        if (fat.liste.l1.rows() != invoices)
            qFatal("another count of invoices");
    }
    InvoiceList &list() { return fat.liste; }
};

// Prepares a desk once and gives a step of it.
template<class Made, class... Arguments>
auto on(void (*step)(Made &), Arguments... arguments)
{
    return [=](int n) -> Step {
        auto desk = std::make_shared<Made>(n, arguments...);
        return [desk, step] {
            step(*desk);
        };
    };
}

// The same with something done before it is measured.
template<class Made>
auto behind(void (*before)(Made &), void (*step)(Made &))
{
    return [=](int n) -> Step {
        auto desk = std::make_shared<Made>(n);
        before(*desk);
        return [desk, step] {
            step(*desk);
        };
    };
}

template<class Made>
void findingsOf(Made &desk, std::unique_ptr<Checks> checks)
{
    Q_UNUSED(desk);
    checks->restart();
    checks->finish();
}

void tickEvery(Grid &grid, int which)
{
    grid.tickWhere([which](int row) { return row % which == 0; });
}

// Every value brings words of the invoice's, the cash slip's and the line's templates.
struct HostileSapDesk : Desk
{
    Fat fat{program};

    explicit HostileSapDesk(int invoices)
    {
        QByteArray text;
        for (int i = 1; i <= invoices; ++i) {
            text += ruled(u"@5", 5, u"20240301", 20, u"00000101", 28, u"cari kod", 39,
                          u"saat tarih tutar cari unvan fatura no", 80, u"KRV"_s + digits(i, 12),
                          96, u"    100.0000", 109, u"      0.0000", 122, u"     18.0000", 135,
                          u"    118.0000", 148, u"0");
            text += ruled(u"@6", 31, u"birim fiyat", 46, u"kdv tutari", 97, u"    1.00", 106,
                          u"    100.0000", 124, u"    100.0000");
        }
        writeText(source, text);
        fat.load();
        fat.dosyaac(source);
        fat.liste.fattumsec();
    }
};

// As many members of staff as invoices, each invoice with another one.
struct StaffDesk : Desk
{
    Fat fat{program};

    explicit StaffDesk(int invoices)
    {
        QStringList statements;
        QByteArray text;
        for (int i = 0; i < invoices; ++i) {
            statements << u"insert into per values (Null,'P%1','%1')"_s.arg(digits(i, 8));
            text += ruled(u"@5", 5, u"20240301", 20, digits(i, 8), 28, u"120.1", 39, u"ÜNVAN", 80,
                          u"KRV"_s + digits(i, 12), 96, u"    100.0000", 148, u"0");
        }
        query(statements);
        writeText(source, text);
        fat.load();
        fat.dosyaac(source);
    }
};

// --- Düzey invoices

struct DuzeyDesk : Desk
{
    Fatduz fatduz{program};

    explicit DuzeyDesk(int invoices)
    {
        writeWorkbook(source, u"Sheet1"_s, invoices * 5, [](int record) {
            const int invoice = record / 5;
            BookRow row{QDate(2024, 1 + invoice % 12, 1 + invoice % 28),
                        u"120.01.%1"_s.arg(invoice),
                        u"MÜŞTERİ %1"_s.arg(invoice),
                        u"IRS-%1"_s.arg(invoice),
                        u"DZ"_s + digits(invoice, 9),
                        u"SATIŞ"_s,
                        u"URUN%1"_s.arg(record),
                        1 + record % 40,
                        u"ADET"_s,
                        3.25 + record % 977};
            for (int rate = 0; rate < 6; ++rate)
                row << BookCell();
            row << 20 << u"DZ1"_s << u"30GUN"_s << u"R"_s << u"B"_s << u"A"_s << BookCell();
            return row;
        });
        query({u"insert into birim values (Null,'05','','ADET','ADET','','','','')"_s,
               u"insert into per values (Null,'P1','DZ1')"_s});
        fatduz.load();
        read();
        fatduz.liste.fattumsec();
    }
    void read()
    {
        fatduz.dosyaac(source);
        if (fatduz.liste.l1.isEmpty())
            qFatal("nothing was read");
    }
};

// --- Cards

QByteArray cardLine(const Cr &, int card, const QString &title)
{
    return ruled(u"CR", 3, digits(card, 8), 11, title, 61, u"BURSA");
}

QByteArray cardLine(const Stoktrf &, int card, const QString &title)
{
    return ruled(u"", 25, u"K"_s + digits(card, 8), 79, title, 119, u"KUTU", 125, u"  0.000", 133,
                 u"10");
}

template<class Screen>
struct CardDesk : Desk
{
    Screen screen{program};

    explicit CardDesk(int cards, const QString &title = u"ÇINAR GIDA"_s)
    {
        QByteArray text;
        for (int card = 0; card < cards; ++card)
            text += cardLine(screen, card, title);
        writeText(source, text);
        screen.dosyaac(source);
        if (screen.l1.rows() != cards)
            qFatal("another count of cards");
    }
};

// --- Slips

struct SlipsDesk : Desk
{
    Movements movements;

    explicit SlipsDesk(int rows, const QString &title = u"ÇINAR GIDA PAZARLAMA"_s)
        : movements(program, rows, [&title](int) { return title; })
    {
    }
};

// --- Counts and prices

struct CountDesk : Desk
{
    Sayimform sayim{program};

    explicit CountDesk(int lines)
    {
        QByteArray text;
        for (int line = 0; line < lines; ++line)
            text += "869" + digits(line, 10).toLatin1() + ",1\r\n";
        writeText(source, text);
        sayim.load();
        sayim.dosyaac(source);
    }
};

struct PriceDesk : Desk
{
    Urunform form{program};
    QString block;

    explicit PriceDesk(int products)
    {
        form.yukle();
        for (int product = 0; product < products; ++product)
            block += u"URN%1\tAD\t1,5\t2,5\n"_s.arg(digits(product, 6));
    }
};

// --- Documents read back

struct WrittenDesk : SapDesk
{
    explicit WrittenDesk(int invoices)
        : SapDesk(invoices)
    {
        fat.liste.fattumsec();
        fat.kaydet(target);
    }
    void mark()
    {
        WrittenDocuments written;
        written.setRows({.grid = &fat.liste.l1,
                         .family = DocumentFamily::Invoices,
                         .kind = {},
                         .number = L1::FaturaNumarasi,
                         .date = L1::FaturaTarihi,
                         .customer = L1::CariKodu,
                         .amount = L1::ToplamTutar});
        written.setFolders({quiet.folder.path()});
        while (written.isReading())
            QCoreApplication::processEvents();
    }
};

// --- Lists that are shown

struct ShownDesk : SapDesk
{
    GridView view{fat.liste.l1, u"l1"_s};
    Totals totals{fat.liste.l1, [this] {
                      return shapeOf(fat);
                  }};
    TickOffer offer{fat.liste.l1, [this] {
                        return shapeOf(fat);
                    }};

    explicit ShownDesk(int invoices)
        : SapDesk(invoices)
    {
        view.resize(1000, 500);
        view.show();
        QCoreApplication::processEvents();
        totals.told();
    }
};

QStringList accounts(int n)
{
    QStringList all;
    for (int i = 0; i < n; ++i)
        all << u"120.%1"_s.arg(i);
    return all;
}

struct Case
{
    const char *name;
    int n;
    std::function<Step(int n)> prepare;
};

const QList<Case> &cases()
{
    using Accounts = CardDesk<Cr>;
    using Materials = CardDesk<Stoktrf>;
    static const QList<Case> all{
        {"sap.list", 200, on<SapDesk>([](SapDesk &d) { d.fat.umurlarfaturabaslikoku(); })},
        {"sap.list-unpriced", 200,
         on<SapDesk>([](SapDesk &d) { d.fat.umurlarfaturabaslikoku(); }, SapDesk::NonePriced)},
        {"sap.list-staff", 200,
         on<StaffDesk>([](StaffDesk &d) { d.fat.umurlarfaturabaslikoku(); })},
        {"sap.click", 200, on<SapDesk>([](SapDesk &d) { d.fat.satirsec(d.list().l1.rows() - 1); })},
        {"sap.export", 100,
         behind<SapDesk>([](SapDesk &d) { d.list().fattumsec(); },
                         [](SapDesk &d) { d.fat.kaydet(d.target); })},
        {"sap.export-hostile", 50,
         on<HostileSapDesk>([](HostileSapDesk &d) { d.fat.kaydet(d.target); })},
        {"sap.findings", 200, on<SapDesk>([](SapDesk &d) { findingsOf(d, checksOf(d.fat)); })},
        {"list.dates", 400,
         behind<SapDesk>(
             [](SapDesk &d) {
                 d.list().ilkTarih.setDate(QDate(2024, 3, 5));
                 d.list().sonTarih.setDate(QDate(2024, 3, 15));
             },
             [](SapDesk &d) { d.list().tarihbelirle(); })},
        {"list.views", 400, on<SapDesk>([](SapDesk &d) {
             d.list().eolan();
             d.list().eolmayan();
             d.list().fattumsec();
         })},
        {"list.search", 400,
         behind<SapDesk>([](SapDesk &d) { d.list().arananUnvan.setText(u"Ç"_s); },
                         [](SapDesk &d) { d.list().unvanara(); })},
        {"list.remove", 400,
         behind<SapDesk>([](SapDesk &d) { tickEvery(d.list().l1, 2); },
                         [](SapDesk &d) { d.list().secilenlerisil(); })},
        {"list.undo", 400,
         behind<SapDesk>(
             [](SapDesk &d) {
                 d.list().l1.rememberSteps();
                 tickEvery(d.list().l1, 2);
                 d.list().secilenlerisil();
             },
             [](SapDesk &d) {
                 if (!d.list().l1.undo())
                     qFatal("nothing to take back");
             })},
        {"shown.ticks", 400, on<ShownDesk>([](ShownDesk &d) {
             for (int row = 0; row < d.list().l1.rows(); ++row) {
                 d.list().l1.setTicked(row, true);
                 d.totals.told();
             }
         })},
        {"shown.filter", 400, on<ShownDesk>([](ShownDesk &d) {
             d.view.filter({u"x"_s, [](int row) {
                                return row % 3 == 0;
                            }});
             d.view.endFilter();
         })},
        {"shown.remove", 400,
         behind<ShownDesk>([](ShownDesk &d) { tickEvery(d.list().l1, 2); },
                           [](ShownDesk &d) {
                               d.list().secilenlerisil();
                               d.totals.told();
                           })},
        {"shown.select-and-copy", 400, on<ShownDesk>([](ShownDesk &d) {
             d.view.selectAll();
             d.view.copySelection();
         })},
        {"duzey.list", 200, on<DuzeyDesk>([](DuzeyDesk &d) { d.fatduz.yenidenoku(); })},
        {"duzey.open", 200,
         [](int n) -> Step {
             auto d = std::make_shared<DuzeyDesk>(n);
             auto fatduz = std::make_shared<Fatduz>(d->program);
             fatduz->load();
             return [d, fatduz] {
                 fatduz->dosyaac(d->source);
             };
         }},
        {"duzey.click", 200, on<DuzeyDesk>([](DuzeyDesk &d) {
             for (int row = 0; row < d.fatduz.liste.l1.rows(); ++row)
                 d.fatduz.satirsec(row);
         })},
        {"duzey.export", 100, on<DuzeyDesk>([](DuzeyDesk &d) { d.fatduz.kaydet(d.target); })},
        {"duzey.findings", 200,
         on<DuzeyDesk>([](DuzeyDesk &d) { findingsOf(d, checksOf(d.fatduz)); })},
        {"cards.read", 1000, on<Accounts>([](Accounts &d) { d.screen.dosyaac(d.source); })},
        {"cards.write", 1000, on<Accounts>([](Accounts &d) { d.screen.kaydet(d.target); })},
        {"cards.write-hostile", 1000,
         on<Accounts>([](Accounts &d) { d.screen.kaydet(d.target); },
                      u"unvan tarih saat caridataref carikod"_s)},
        {"cards.findings", 1000,
         on<Accounts>([](Accounts &d) { findingsOf(d, checksOf(d.screen)); })},
        {"cards.datarefyap", 1000,
         [](int n) -> Step {
             auto d = std::make_shared<Accounts>(1);
             return [d, n] {
                 d->screen.datarefyap(accounts(n));
             };
         }},
        {"materials.read", 1000, on<Materials>([](Materials &d) { d.screen.dosyaac(d.source); })},
        {"materials.write", 500, on<Materials>([](Materials &d) { d.screen.kaydet(d.target); })},
        {"materials.findings", 1000,
         on<Materials>([](Materials &d) { findingsOf(d, checksOf(d.screen)); })},
        {"slips.read", 500,
         [](int n) -> Step {
             auto d = std::make_shared<SlipsDesk>(n);
             auto screen = std::make_shared<SlipScreen>(d->program, cafis());
             return [d, screen] {
                 screen->dosyaac(screen->form().files[0], d->movements.source);
             };
         }},
        {"slips.write", 500, on<SlipsDesk>([](SlipsDesk &d) { d.movements.write(d.target); })},
        {"slips.write-words", 250,
         on<SlipsDesk>([](SlipsDesk &d) { d.movements.write(d.target); }, u"Kolay saat tutar"_s)},
        {"slips.findings", 500,
         on<SlipsDesk>([](SlipsDesk &d) { findingsOf(d, checksOf(d.movements.screen)); })},
        {"slips.findings-words", 250,
         on<SlipsDesk>([](SlipsDesk &d) { findingsOf(d, checksOf(d.movements.screen)); },
                       u"Kolay saat tutar"_s)},
        {"count.read", 500, on<CountDesk>([](CountDesk &d) { d.sayim.dosyaac(d.source); })},
        {"count.write", 500, on<CountDesk>([](CountDesk &d) { d.sayim.kaydet(d.target); })},
        {"count.findings", 500,
         on<CountDesk>([](CountDesk &d) { findingsOf(d, checksOf(d.sayim)); })},
        {"prices.paste", 500, on<PriceDesk>([](PriceDesk &d) { d.form.yapistir(0, 1, d.block); })},
        {"prices.save", 500,
         behind<PriceDesk>([](PriceDesk &d) { d.form.yapistir(0, 1, d.block); },
                           [](PriceDesk &d) {
                               d.form.kaydet();
                               d.form.yukle();
                           })},
        {"documents.read", 100, on<WrittenDesk>([](WrittenDesk &d) {
             readDocument(d.target, [](const DocumentRecord &) {});
         })},
        {"documents.read-back", 100, on<WrittenDesk>([](WrittenDesk &d) {
             readBack(d.target, writtenRows(d.list().l1, DocumentFamily::Invoices, true,
                                            L1::FaturaNumarasi, L1::ToplamTutar));
         })},
        {"documents.marks", 100, on<WrittenDesk>([](WrittenDesk &d) { d.mark(); })},
    };
    return all;
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    for (const Case &each : cases()) {
        if (argc < 2) {
            std::printf("%s %d\n", each.name, each.n);
        } else if (QByteArrayView(argv[1]) == each.name) {
            for (const int times : {1, 2, 4}) {
                const int n = each.n * times * (argc > 2 ? std::atoi(argv[2]) : 1);
                const Step step = each.prepare(n);
                const auto start = std::clock();
                measured(step);
                std::printf("%s %d %.1f ms\n", each.name, n,
                            static_cast<double>(std::clock() - start) * 1e3 / CLOCKS_PER_SEC);
            }
        }
    }
    return 0;
}
