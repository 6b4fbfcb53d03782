#pragma once

#include "base/grid.h"
#include "base/linereader.h"
#include "text/record.h"
#include "text/spellings.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <functional>
#include <optional>

namespace kervan {

// The invoice file (.bif): one record a line, told by its first two characters. "@5" heads an
// invoice, "@6" is a line of it, "@8" a collection.

inline bool isHeader(QStringView line)
{
    return line.startsWith(u"@5");
}
inline bool isLine(QStringView line)
{
    return line.startsWith(u"@6");
}
inline bool isCollection(QStringView line)
{
    return line.startsWith(u"@8");
}

/// A header and a collection count only in state "0".
inline bool countsAsHeader(QStringView line)
{
    return cut(line, 148, 1) == u"0";
}
inline bool countsAsCollection(QStringView line)
{
    return cut(line, 22, 1) == u"0";
}

/// Where the invoice number stands; on other records other text passes through these columns.
inline QStringView invoiceNumber(QStringView line)
{
    return trimmedBlanks(cut(line, 80, 15));
}
inline QStringView productCode(QStringView line)
{
    return trimmedBlanks(cut(line, 31, 15));
}
inline QStringView collectionRate(QStringView line)
{
    return cut(line, 24, 8);
}

/// Cuts a header into the cells of a row of the invoice list.
void cutHeader(QStringView line, Grid &l1, int row);

/// The fields of an "@6" record: quantity under "#.00", price and amount under "#.0000".
struct InvoiceLine
{
    QString urunKodu, urunAdi, miktar, birimFiyat, tutar;
};
InvoiceLine cutLine(QStringView line);

using TakeLine = std::function<void(QStringView line)>;

/// Walks the file for one invoice and hands over its "@6" lines: the first run of them behind the
/// first line that bears the number in its columns, whatever record that is. A file that can't be
/// read is a Failure.
void walkInvoice(const QString &path, const QString &faturano, const TakeLine &take);

/// The same for many invoices of one file, which is walked once to find where each begins.
class BifIndex
{
public:
    BifIndex(const QString &path, QSet<QString> numbers);
    void walkInvoice(const QString &faturano, const TakeLine &take);

private:
    LineReader m_reader;
    QHash<QString, qint64> m_firstLine; // number to the offset of its first "@6" line
};

} // namespace kervan
