#pragma once

#include "workbook/cellformat.h"
#include "workbook/workbook.h"

namespace kervan {

/// Puts a sheet together from filled cells, as their places come. Rows and columns count from 0 at
/// the sheet's first corner. Empty texts are not filled, so they may be added or not.
class SheetBuilder
{
public:
    static constexpr qint64 mostRows = 1048576;
    static constexpr qint64 mostColumns = 16384;
    static constexpr qsizetype mostCells = 25'000'000; ///< and as many texts
    static constexpr qsizetype mostTextBytes = 512LL * 1024 * 1024;

    struct Place
    {
        qint64 row;
        qint64 column;
    };
    /// A piece of the kept texts.
    struct Text
    {
        quint32 start = 0;
        quint32 length = 0;
    };

    /// The meanings of the formats that cells refer to by number.
    QList<CellFormat> formats;
    bool starts1904 = false;

    /// Keeps a text (UTF-8) for any number of cells.
    Text keep(QByteArrayView utf8);
    void add(Place place, Text text);
    /// A number; one whose format is missing is plain.
    void add(Place place, double value, qsizetype format);
    /// A day number of the 1900 system.
    void addDate(Place place, double serial);
    void addTruth(Place place, bool value);

    /// Gives the sheet, and leaves nothing here. Cells at the same place: the last one counts.
    std::shared_ptr<const Sheet> finish();

private:
    void add(Place place, quint64 bits, Sheet::Kind kind, quint8 zeros = 0);

    Sheet m_sheet;
    qsizetype m_kept = 0; // texts
    bool m_sorted = true;
};

} // namespace kervan
