#include "workbook/workbook.h"

#include "base/failure.h"
#include "base/filefault.h"
#include "workbook/cellformat.h"
#include "workbook/compoundfile.h"
#include "workbook/xls.h"
#include "workbook/xlsx.h"

#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <algorithm>
#include <bit>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostFileBytes = 256LL * 1024 * 1024;

[[noreturn]] void failAt(const QString &path, const QString &why, const QStringList &choices = {})
{
    throw fileFailure(path, u"okunamadı"_s, why, choices);
}

// Other programs may have it open, too: Qt asks for no more than reading, and shares it.
void open(QFile &file)
{
    clearFault();
    if (!file.open(QIODevice::ReadOnly))
        failAt(file.fileName(), filefault(file, lastFault()));
}

// Why these bytes are no workbook, for files that only bear the name of one.
[[noreturn]] void failForeign(QByteArrayView bytes)
{
    constexpr qsizetype looksAt = 4096;
    if (bytes.isEmpty())
        throw Failure(u"dosya boş"_s);
    const bool isUtf16 = bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF");
    const QByteArrayView start = bytes.first(std::min(bytes.size(), looksAt));
    if (!isUtf16 && start.contains('\0'))
        throw Failure(u"Excel çalışma kitabı değil"_s);
    const QString text =
        isUtf16 ? QStringDecoder(QStringDecoder::Utf16)(start) : QString::fromUtf8(start);
    const bool isMarkup = QStringView(text).trimmed().startsWith(u'<');
    throw Failure(u"Excel çalışma kitabı değil, %1; Excel'de açıp .xlsx olarak kaydedin"_s.arg(
        isMarkup ? u"HTML ya da XML metni"_s : u"düz metin"_s));
}

// The kind of a file is told by its first bytes.
enum class Format { Xlsx, Xls };

Format formatOf(QByteArrayView bytes)
{
    if (bytes.startsWith("PK"))
        return Format::Xlsx;
    const bool isBareBiff = bytes.size() > 1 && bytes[0] == '\x09' &&
                            QByteArrayView("\0\2\4\x08", 4).contains(bytes[1]);
    if (isBareBiff || bytes.startsWith(CompoundFile::mark))
        return Format::Xls;
    failForeign(bytes);
}

// Hands the bytes of the file to the step, whose failures then name the file.
template<class Step>
auto ofFile(const QString &path, Step &&step)
{
    QFile file(path);
    open(file);
    if (file.size() > mostFileBytes)
        failAt(path, u"%1 MB sınırını aşıyor"_s.arg(mostFileBytes / 1024 / 1024));
    clearFault();
    QByteArray bytes = file.readAll();
    if (file.error() != QFile::NoError)
        failAt(path, filefault(file, lastFault()));
    file.close();
    decltype(step(std::move(bytes))) result;
    const auto failed = passOver([&] { result = step(std::move(bytes)); });
    if (failed)
        failAt(path, failed->description(), failed->choices());
    return result;
}

} // namespace

const Sheet::Cell *Sheet::find(int row, int field) const
{
    if (row < 0 || row >= rows())
        throw Failure(u"Sayfada %1. kayıt yok."_s.arg(row + 1));
    if (field < 0 || field >= columns())
        throw Failure(u"Sayfada %1. alan yok."_s.arg(field + 1));
    const int column = m_firstColumn + field;
    const Cell *const begin = m_cells.constData() + m_rowStarts[row];
    const Cell *const end = m_cells.constData() + m_rowStarts[row + 1];
    // Most rows have no gap, so the cell is mostly as far from the first as its column is.
    if (begin != end && column >= begin->column) {
        const Cell *const guess = begin + (column - begin->column);
        if (guess < end && guess->column == column)
            return guess;
    }
    const Cell *const found = std::ranges::lower_bound(begin, end, column, {}, &Cell::column);
    return found != end && found->column == column ? found : nullptr;
}

Sheet::Kind Sheet::kind(int row, int field) const
{
    const Cell *const cell = find(row, field);
    return cell ? cell->kind : Kind::Empty;
}

QString Sheet::text(int row, int field) const
{
    const Cell *const cell = find(row, field);
    if (!cell)
        return {};
    switch (cell->kind) {
    case Kind::Text:
        return QString::fromUtf8(
            QByteArrayView(m_texts).sliced(static_cast<qsizetype>(cell->bits >> 32U),
                                           static_cast<qsizetype>(cell->bits & 0xFFFFFFFFU)));
    case Kind::Number:
        return numberText(std::bit_cast<double>(cell->bits), cell->zeros);
    case Kind::Date:
        return dateText(std::bit_cast<double>(cell->bits));
    case Kind::Boolean:
        return cell->bits != 0 ? u"Doğru"_s : u"Yanlış"_s;
    case Kind::Empty:
        break;
    }
    return {};
}

QString Sheet::address(int row, int field) const
{
    QString letters;
    for (int column = m_firstColumn + field + 1; column > 0; column = (column - 1) / 26)
        letters.prepend(QChar(u'A' + (column - 1) % 26));
    const qint64 first = m_cells.isEmpty() ? 0 : m_cells.first().row;
    return letters + QString::number(first + row + 1);
}

std::optional<double> Sheet::number(int row, int field) const
{
    const Cell *const cell = find(row, field);
    if (!cell || cell->kind != Kind::Number)
        return std::nullopt;
    return std::bit_cast<double>(cell->bits);
}

std::shared_ptr<const Sheet> readSheet(const QString &path, const QString &sheetName)
{
    return ofFile(path, [&](QByteArray bytes) {
        return formatOf(bytes) == Format::Xlsx ? readXlsx(bytes, sheetName)
                                               : readXls(std::move(bytes), sheetName);
    });
}

QStringList readSheetNames(const QString &path)
{
    return ofFile(path, [](QByteArray bytes) {
        return formatOf(bytes) == Format::Xlsx ? xlsxSheetNames(bytes)
                                               : xlsSheetNames(std::move(bytes));
    });
}

std::shared_ptr<const Sheet> Workbooks::sheet(const QString &path, const QString &sheetName)
{
    QFile file(path);
    open(file);
    file.close();
    // Taken before the reading, so that a change in its midst is noticed at the next call.
    const QFileInfo info(path);
    const qint64 size = info.size();
    const QDateTime changed = info.lastModified();
    if (!m_sheet || path != m_path || sheetName != m_sheetName || size != m_size ||
        changed != m_changed) {
        m_sheet.reset();
        m_sheet = readSheet(path, sheetName);
        m_path = path;
        m_sheetName = sheetName;
        m_size = size;
        m_changed = changed;
    }
    return m_sheet;
}

} // namespace kervan
