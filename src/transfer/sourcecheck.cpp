#include "transfer/sourcecheck.h"

#include "base/codepage.h"

#include <QFile>
#include <QList>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 looksAt = 65536;
constexpr int mostLines = 200;

QByteArray beginningOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(looksAt) : QByteArray();
}

// The layouts of the sources, loosely: enough to tell one from another.
struct Layout
{
    SourceKind kind;
    const char16_t *line;
};
constexpr std::array<Layout, 4> layouts{{
    {SourceKind::Invoices, u"^@[0-9]"},
    {SourceKind::Stock, u"^.{24}\\S.{93}[^\\s\\d]\\S{0,5} *[\\d.,]+ *\\d"},
    {SourceKind::Count, u"^[0-9A-Za-z]{6,14} *[0-9.,]+ *$"},
    {SourceKind::Accounts, u"^.{2}\\S{3,8} *\\S.*[^\\W\\d]{2}"},
}};

struct Name
{
    SourceKind kind;
    QStringView lines; // that the screen looks for
    QStringView looks;
};
constexpr std::array<Name, 7> names{{
    {SourceKind::Empty, {}, u"dosya boş"},
    {SourceKind::Invoices, u"fatura satırı", u"fatura dosyasına benziyor"},
    {SourceKind::Accounts, u"cari satırı", u"cari listesine benziyor"},
    {SourceKind::Stock, u"stok satırı", u"stok listesine benziyor"},
    {SourceKind::Count, u"sayım satırı", u"sayım dosyasına benziyor"},
    {SourceKind::Workbook, {}, u"bir Excel dosyası"},
    {SourceKind::Xml, {}, u"bir Xml belgesi"},
}};

const Name *nameOf(SourceKind kind)
{
    const auto *found = std::ranges::find(names, kind, &Name::kind);
    return found == names.end() ? nullptr : found;
}

SourceKind kindOf(const QString &line)
{
    static const auto patterns = [] {
        QList<QRegularExpression> made;
        for (const Layout &layout : layouts)
            made << QRegularExpression(QString::fromUtf16(layout.line),
                                       QRegularExpression::UseUnicodePropertiesOption);
        return made;
    }();
    for (std::size_t i = 0; i < layouts.size(); ++i) {
        if (patterns[static_cast<qsizetype>(i)].match(line).hasMatch())
            return layouts[i].kind;
    }
    return SourceKind::Unknown;
}

// UTF-16 without a mark shows by its zeros, which stand at every other place.
bool isUtf16(QByteArrayView bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return true;
    const auto zeros = std::ranges::count(bytes, '\0');
    return bytes.size() >= 8 && zeros * 4 >= bytes.size();
}

// A whole sequence of UTF-8 and no byte that is part of none. A cut at the end is passed over.
bool isUtf8(QByteArrayView bytes)
{
    qsizetype letters = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        if (first < 0x80)
            continue;
        const int behind = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
        if (first < 0xC2 || first > 0xF4)
            return false;
        for (int k = 1; k <= behind && i + k < bytes.size(); ++k) {
            if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0U) != 0x80U)
                return false;
        }
        i += behind;
        ++letters;
    }
    return letters > 0;
}

} // namespace

SourceKind looksLike(const QString &path)
{
    const QByteArray bytes = beginningOf(path);
    if (bytes.trimmed().isEmpty())
        return QFile::exists(path) ? SourceKind::Empty : SourceKind::Unknown;
    if (bytes.startsWith("PK\3\4") || bytes.startsWith("\xD0\xCF\x11\xE0"))
        return SourceKind::Workbook;
    const QString text = fromTextFile(bytes);
    if (text.trimmed().startsWith(u"<?xml"_s))
        return SourceKind::Xml;
    // The kind of most of its lines.
    std::array<int, static_cast<std::size_t>(SourceKind::Xml) + 1> counts{};
    static const QRegularExpression lineEnd(u"\r\n|\r|\n"_s);
    const QStringList lines = text.split(lineEnd, Qt::SkipEmptyParts);
    for (const QString &line : lines.first(std::min(lines.size(), qsizetype(mostLines))))
        ++counts[static_cast<std::size_t>(kindOf(line))];
    const auto most = std::ranges::max_element(counts);
    return static_cast<SourceKind>(most - counts.begin());
}

QString wrongSource(const QString &path, SourceKind wanted, bool found)
{
    const SourceKind kind = looksLike(path);
    if (found && (kind == wanted || kind == SourceKind::Unknown || wanted == SourceKind::Invoices))
        return {};
    const QString none = u"Bu dosyada %1 yok"_s.arg(nameOf(wanted)->lines);
    const Name *name = kind == wanted ? nullptr : nameOf(kind);
    return name ? u"%1: %2."_s.arg(none, name->looks) : none + u'.';
}

QString wrongEncoding(const QString &path)
{
    const QByteArray bytes = beginningOf(path);
    const QString cure = u" Not Defteri'nde \"ANSI\" olarak kaydedip yeniden açın."_s;
    if (isUtf16(bytes))
        return u"Dosya UTF-16 ile kaydedilmiş, satırları okunamaz."_s + cure;
    if (!bytes.startsWith(utf8Mark) && isUtf8(bytes))
        return u"Dosya işaretsiz UTF-8 ile kaydedilmiş, Türkçe harfleri bozuk okunur."_s + cure;
    return {};
}

QString lettersLost(const Grid &grid)
{
    int rows = 0;
    QString first;
    for (int row = 0; row < grid.rows(); ++row) {
        bool loses = false;
        for (int column = 0; column < grid.columnCount() && !loses; ++column) {
            const QString &cell = grid.cell(row, column);
            loses = !isOfCodePage(cell);
            if (loses && rows == 0)
                first = u"%1. satır, \"%2\""_s.arg(row + 1).arg(cell.left(40));
        }
        rows += loses;
    }
    if (rows == 0)
        return {};
    return u"%1 satırda belgeye sığmayan harf var, belgede yerine \"?\" yazılır. İlki: %2"_s
        .arg(rows)
        .arg(first);
}

void checkSource(Notes &notes, const QString &path, SourceKind wanted, const Grid &grid)
{
    notes.add(wrongEncoding(path));
    notes.add(wrongSource(path, wanted, !grid.isEmpty()));
    // Cards hold what stands in their file alone, and a file in the code page no other letters.
    const bool isOfFile = wanted == SourceKind::Accounts || wanted == SourceKind::Stock;
    if (!isOfFile || beginningOf(path).startsWith(utf8Mark))
        notes.add(lettersLost(grid));
}

} // namespace kervan
