#include "invoices/bif.h"

#include "invoices/columns.h"
#include "text/numbers.h"

#include <array>

namespace kervan {

namespace {

template<Mask mask>
QString maskedField(QStringView field)
{
    return masked(pointToComma(trimmedBlanks(field)), mask);
}

QString dateField(QStringView field)
{
    return tarihcevir(trimmedBlanks(field));
}

constexpr auto amount = &maskedField<"#.0000"_mask>;

constexpr std::array<RecordField, 9> headerFields{{
    {L1::FaturaTarihi, 5, 8, &dateField},
    {L1::SapPersonelKodu, 20, 8, &trimmedField},
    {L1::CariKodu, 28, 10, &trimmedField},
    {L1::Unvani, 39, 41, &trimmedField},
    {L1::FaturaNumarasi, 80, 15, &trimmedField},
    {L1::ToplamTutar, 96, 12, amount},
    {L1::IndirimToplami, 109, 12, &maskedField<"#0.0000"_mask>},
    {L1::KdvToplami, 122, 12, amount},
    {L1::GenelToplam, 135, 12, amount},
}};
static_assert(inOrder(headerFields));

enum LineCell { Kod, Ad, Miktar, Fiyat, Tutar, LineCells };
constexpr std::array<RecordField, LineCells> lineFields{{
    {Kod, 31, 15, &trimmedField},
    {Ad, 46, 50, &trimmedField},
    {Miktar, 97, 8, &maskedField<"#.00"_mask>},
    {Fiyat, 106, 12, amount},
    {Tutar, 124, 12, amount},
}};
static_assert(inOrder(lineFields));

} // namespace

void cutHeader(QStringView line, Grid &l1, int row)
{
    cutRecord(line, headerFields,
              [&](int cell, const QString &text) { l1.setCell(row, cell, text); });
}

InvoiceLine cutLine(QStringView line)
{
    std::array<QString, LineCells> cells;
    cutRecord(line, lineFields,
              [&](int cell, const QString &text) { cells[static_cast<std::size_t>(cell)] = text; });
    return {cells[Kod], cells[Ad], cells[Miktar], cells[Fiyat], cells[Tutar]};
}

void walkInvoice(const QString &path, const QString &faturano, const TakeLine &take)
{
    LineReader reader(path);
    bool found = false;
    bool taken = false;
    while (reader.next()) {
        const QStringView line = reader.line();
        found = found || invoiceNumber(line) == faturano;
        if (!found)
            continue;
        if (isLine(line)) {
            taken = true;
            take(line);
        } else if (taken) {
            return;
        }
    }
}

BifIndex::BifIndex(const QString &path, QSet<QString> numbers)
    : m_reader(path)
{
    QStringList waiting; // found, and no "@6" line behind them yet
    while (m_reader.next()) {
        const QStringView line = m_reader.line();
        const auto wanted = numbers.constFind(invoiceNumber(line).toString());
        if (wanted != numbers.constEnd()) {
            waiting << *wanted;
            numbers.erase(wanted);
        }
        if (isLine(line)) {
            for (const QString &number : std::as_const(waiting))
                m_firstLine.insert(number, m_reader.offset());
            waiting.clear();
        }
        if (numbers.isEmpty() && waiting.isEmpty())
            return;
    }
}

void BifIndex::walkInvoice(const QString &faturano, const TakeLine &take)
{
    const auto first = m_firstLine.constFind(faturano);
    if (first == m_firstLine.constEnd())
        return;
    m_reader.seek(*first);
    while (m_reader.next() && isLine(m_reader.line()))
        take(m_reader.line());
}

} // namespace kervan
