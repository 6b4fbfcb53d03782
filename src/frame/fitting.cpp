#include "frame/fitting.h"

#include "base/failure.h"
#include "text/numbers.h"
#include "transfer/sourcecheck.h"
#include "workbook/workbook.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostSheets = 4;
constexpr int mostRecords = 40;

const QStringList &workbookScreens()
{
    static const QStringList words{u"carifisduzey"_s, u"cafis2"_s, u"cafis3"_s,
                                   u"fatduz"_s,       u"cafis"_s,  u"st"_s};
    return words;
}

// A record of a sheet; fields beyond it are empty.
class Record
{
public:
    Record(const Sheet &sheet, int record)
        : m_sheet(sheet)
        , m_record(record)
    {
    }
    QString text(int field) const
    {
        return field < m_sheet.columns() ? m_sheet.text(m_record, field).trimmed() : QString();
    }
    bool hasText(int field) const { return !text(field).isEmpty(); }
    bool hasDate(int field) const
    {
        static const QRegularExpression spelled(u"^\\d{1,2}[./-]\\d{1,2}[./-]\\d{4}"_s);
        return field < m_sheet.columns() && (m_sheet.kind(m_record, field) == Sheet::Kind::Date ||
                                             spelled.match(text(field)).hasMatch());
    }
    bool hasAmount(int field) const
    {
        return field < m_sheet.columns() && (m_sheet.kind(m_record, field) == Sheet::Kind::Number ||
                                             number(text(field).remove(u',')).has_value());
    }

private:
    const Sheet &m_sheet;
    int m_record;
};

// One record that has this shape is enough: headings and sums have others.
struct Shape
{
    QStringView word;
    bool (*fits)(const Record &record);
    QStringView nameOfFile = {}; // a pattern that it begins with
};
constexpr std::array<Shape, 6> shapes{{
    {u"fatduz",
     [](const Record &record) {
         const QString kind = record.text(5);
         return record.hasText(4) && (kind.startsWith(u"SATIŞ") || kind.startsWith(u"ALIŞ"));
     }},
    {u"cafis3",
     [](const Record &record) {
         return record.text(8) == u"HHSATIS";
     }},
    {u"cafis2", [](const Record &record) { return record.hasText(0) && record.hasAmount(14); },
     u"^\\d{8}-"},
    {u"cafis",
     [](const Record &record) {
         return record.hasAmount(0) && record.hasText(5) && record.hasDate(11);
     }},
    {u"carifisduzey",
     [](const Record &record) {
         return record.hasDate(0) && record.hasText(1) && record.hasAmount(6);
     }},
    {u"carifisduzey",
     [](const Record &record) {
         return record.hasDate(5) && record.hasText(3) && record.hasAmount(7);
     }},
}};

QStringList screensOfSheet(const Sheet &sheet, const QString &fileName)
{
    QStringList words;
    for (const Shape &shape : shapes) {
        const QRegularExpression name(shape.nameOfFile.toString());
        bool fits = false;
        for (int record = 0; record < std::min(sheet.rows(), mostRecords) && !fits; ++record)
            fits = shape.fits(Record(sheet, record));
        if (fits && name.match(fileName).hasMatch() && !words.contains(shape.word.toString()))
            words << shape.word.toString();
    }
    // What tells itself by a word of its own is not taken for one that has columns like it.
    for (const QString &sure : {u"fatduz"_s, u"cafis3"_s, u"cafis2"_s}) {
        if (words.contains(sure))
            return {sure};
    }
    return words;
}

QStringList screensOfWorkbook(const QString &path)
{
    QStringList words;
    passOver([&] {
        const QStringList sheets = readSheetNames(path);
        if (sheets.contains(u"cari mey"_s, Qt::CaseInsensitive)) {
            words << u"st"_s;
            return;
        }
        for (const QString &name : sheets.first(std::min(sheets.size(), mostSheets))) {
            for (const QString &word :
                 screensOfSheet(*readSheet(path, name), QFileInfo(path).fileName())) {
                if (!words.contains(word))
                    words << word;
            }
        }
    });
    return words.isEmpty() ? workbookScreens() : words;
}

} // namespace

QStringList screensAtAGlance(const QString &path)
{
    switch (looksLike(path)) {
    case SourceKind::Invoices:
        return {u"fat"_s};
    case SourceKind::Accounts:
        return {u"cr"_s};
    case SourceKind::Stock:
        return {u"stoktrf"_s};
    case SourceKind::Count:
        return {u"sayimform"_s};
    case SourceKind::Workbook:
        return workbookScreens();
    case SourceKind::Unknown:
    case SourceKind::Empty:
    case SourceKind::Xml:
        break;
    }
    return {};
}

QStringList screensFor(const QString &path)
{
    return looksLike(path) == SourceKind::Workbook ? screensOfWorkbook(path)
                                                   : screensAtAGlance(path);
}

} // namespace kervan
