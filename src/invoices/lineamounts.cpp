#include "invoices/lineamounts.h"

#include "invoices/columns.h"
#include "invoices/invoicedefinitions.h"
#include "text/numbers.h"

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr double packsPerCarton = 10;
constexpr double extraTaxPercent = 18;
constexpr double vatFactor = 1.18;

// A line sells in packs, or from ten packs on in cartons of ten. The number of cartons, the carton
// price and the net price are single precision; all else is double, read back from the cells.
struct Selling
{
    QString miktar;
    double quantity = 0;
    bool cartons = false;
};

Selling selling(const InvoiceLine &line)
{
    const double quantity = toNumber(line.miktar);
    const float packs = toSingle(quantity);
    if (packs < static_cast<float>(packsPerCarton))
        return {line.miktar, quantity, false};
    const float cartons = packs / static_cast<float>(packsPerCarton);
    return {toText(cartons), static_cast<double>(cartons), true};
}

QString cartonPrice(const InvoiceLine &line)
{
    return toText(toSingle(toNumber(line.birimFiyat) * packsPerCarton));
}

QString unitCode(const Selling &unit, const LineLookups &lookups)
{
    return birimbul(lookups.lbrm, unit.cartons ? u"KARTON"_s : u"PAKET"_s);
}

QString dealerAmount(const InvoiceLine &line, const LineLookups &lookups, const Selling &unit)
{
    const double price = toNumber(lookups.prices.satisfiyatibul(line.urunKodu));
    return toText((unit.cartons ? price * packsPerCarton : price) * unit.quantity);
}

double numberIn(const Grid &grid, int row, int column)
{
    return toNumber(grid.cell(row, column));
}

} // namespace

void addToL3(const InvoiceLine &line, const LineLookups &lookups, Grid &l3)
{
    const int row = l3.addRow(line.urunKodu);
    const auto set = [&](int column, const QString &text) {
        l3.setCell(row, column, text);
    };
    const auto at = [&](int column) {
        return numberIn(l3, row, column);
    };

    set(L3::UrunAdi, line.urunAdi);
    const Selling unit = selling(line);
    set(L3::Miktar, unit.miktar);
    const QString carton = unit.cartons ? cartonPrice(line) : QString();
    set(L3::BirimFiyat, unit.cartons ? carton : line.birimFiyat);
    set(L3::Tutar, unit.cartons ? carton : line.tutar);
    set(L3::Birim, unitCode(unit, lookups));
    set(L3::BayiSatisFiyati, dealerAmount(line, lookups, unit));
    set(L3::Kdv, u"18"_s);
    set(L3::IndirimTutari, u"0"_s);
    set(L3::KdvTutari, u"0"_s);
    for (int column = L3::Yuzde1; column <= L3::Tipi; ++column)
        set(column, u"0"_s);
    set(L3::Toplam, line.tutar);

    set(L3::BayiKari, toText(at(L3::Toplam) - at(L3::BayiSatisFiyati)));
    set(L3::EkVergiTutari, toText(at(L3::BayiKari) * extraTaxPercent / 100));
    const double taxOfOne = divided(at(L3::EkVergiTutari), at(L3::Miktar));
    set(L3::BirimFiyat, toText(toSingle((at(L3::BirimFiyat) - taxOfOne) / vatFactor)));
}

void addToL2(const InvoiceLine &line, const LineLookups &lookups, Grid &l2)
{
    const int row = l2.addRow(line.urunKodu);
    const auto set = [&](int column, const QString &text) {
        l2.setCell(row, column, text);
    };
    const auto at = [&](int column) {
        return numberIn(l2, row, column);
    };

    set(L2::UrunAdi, line.urunAdi);
    const Selling unit = selling(line);
    set(L2::Miktar, unit.miktar);
    set(L2::BirimFiyat, line.birimFiyat);
    set(L2::Tutar,
        u"%1  (%2)"_s.arg(unit.cartons ? cartonPrice(line) : line.tutar, unitCode(unit, lookups)));
    set(L2::BayiSatisFiyati, dealerAmount(line, lookups, unit));
    set(L2::Kdv, u"18"_s);
    set(L2::IndirimTutari, u"0"_s);
    set(L2::KdvTutari, u"0"_s);
    set(L2::Toplam, line.tutar);

    const Mask margin = "#0.000000"_mask;
    set(L2::BayiKari, masked(at(L2::Toplam) - at(L2::BayiSatisFiyati), margin));
    set(L2::EkVergiTutari, masked(at(L2::BayiKari) * extraTaxPercent / 100, margin));
}

} // namespace kervan
