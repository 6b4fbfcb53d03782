#include "work.h"

#include "aktar/commandports.h"
#include "aktar/transfers.h"
#include "base/failure.h"
#include "base/sqlserver.h"
#include "base/systemclock.h"
#include "logolink/sqlsettings.h"
#include "stocktake/urunform.h"
#include "store/definition.h"
#include "store/definitionscreen.h"
#include "store/settings.h"

#include <QTextStream>

#include <cstdlib>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

class NoServer : public SqlServer
{
public:
    std::unique_ptr<SqlConnection> connect(const QString &, const SqlOptions &) override
    {
        throw Failure(u"no server here"_s);
    }
};

// The doors of a program that nobody sits at.
struct Desk
{
    LineBoxes boxes;
    GivenNames names;
    SystemClock clock;
    NoServer server;
    Program program;

    Desk(const QString &place, const QString &folder)
        : boxes(true)
        , program{place + u'/' + folder, {}, {}, {}, boxes, names, clock, server}
    {
        boxes.setTell([](const QString &) {});
    }
};

void tell(const QString &word, int number)
{
    static QTextStream out(stdout);
    out << word << ' ' << number << Qt::endl;
}

void write(Desk &desk, const QString &place, const Kind &kind, int number)
{
    const Transfer &transfer = *findTransfer(kind.command);
    const Options options = readOptions(kind.command, kind.choices, optionsOf(transfer));
    OpenScreen screen = transfer.begin(desk.program, options);
    screen.open();
    for (const Choice &choice : screen.choices) {
        if (options.has(choice.option))
            choice.of(options.value(choice.option))();
    }
    screen.read(place + u"/kaynak/"_s + kind.source);
    if (screen.ticks)
        screen.list.setAllTicked(true);
    desk.names.target = u"%1/belge/%2-%3.xml"_s.arg(place, kind.name).arg(number);
    screen.write();
}

} // namespace

const QList<Kind> &kinds()
{
    static const QStringList invoice{u"--firma"_s, u"MERKEZ ŞUBE"_s, u"--kdv"_s,
                                     u"18"_s,      u"--plan"_s,      u"30GUN"_s};
    static const QList<Kind> all{
        {u"fatura"_s, u"fatura"_s, u"fatura.bif"_s, invoice},
        {u"nakit"_s, u"nakit"_s, u"nakit.xlsx"_s, {}},
        {u"banka"_s, u"nakit"_s, u"banka.xlsx"_s, {u"--belge"_s, u"banka"_s}},
        {u"cari"_s, u"cari"_s, u"cari.txt"_s, {}},
        {u"stok"_s, u"stok"_s, u"stok.txt"_s, {u"--birim-seti"_s, u"05"_s}}};
    return all;
}

void writeDocuments(const QString &place, int first)
{
    Desk desk(place, u"program"_s);
    for (int number = first;; ++number) {
        const Kind &kind = kinds()[number % kinds().size()];
        write(desk, place, kind, number);
        tell(kind.name, number);
    }
}

QString savedValue(int number)
{
    return QString::number(number).rightJustified(savedLength, u'x');
}

void saveSettings(const QString &place, int first)
{
    Desk desk(place, u"ayar"_s);
    DefinitionScreen staff(desk.program, *definitionOf(u"per"));
    Urunform prices(desk.program);
    ValueSetting cash(desk.program, valueDialogOf(u"kskod"));
    Kdvmu texts(desk.program);
    Ayr folders(desk.program);
    staff.yukle();
    prices.yukle();
    for (int row = prices.l1.rows(); row < savedPrices; ++row)
        prices.satirekle(row - 1);
    for (int number = first;; ++number) {
        const QString value = savedValue(number);
        staff.yeni();
        staff.text(0).setText(QString::number(number));
        staff.text(1).setText(value);
        staff.kaydet(-1);
        tell(u"per"_s, number);
        for (int row = 0; row < prices.l1.rows(); ++row) {
            prices.l1.setCell(row, Urunform::Kod, u"U%1"_s.arg(row));
            prices.l1.setCell(row, Urunform::Fiyat, QString::number(number));
        }
        prices.kaydet();
        tell(u"urun"_s, number);
        cash.kod.setText(value);
        cash.kaydet();
        texts.genel.setText(value);
        texts.satir.setText(value);
        texts.kaydet();
        for (TextField &field : folders.fields)
            field.setText(value);
        folders.kaydet();
        writeSqlSettings(desk.program.path(u"sqlbaglan.kvz"), {value, value, value, value, value});
        tell(u"dosya"_s, number);
    }
}

} // namespace kervan
