// Workbooks of zipped XML: the parts of an input are zipped anew, so that mutations reach the XML;
// one without parts is the file itself.

#include "base/failure.h"
#include "support/harness.h"
#include "support/ziparchive.h"
#include "workbook/workbook.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

// What the library that zips takes for a name.
bool isPlain(const QByteArray &name)
{
    return QString::fromUtf8(name).toUtf8() == name &&
           std::ranges::all_of(name, [](char c) { return static_cast<unsigned char>(c) >= ' '; });
}

void walk(const Sheet &sheet)
{
    constexpr int most = 60;
    for (int record = 0; record < std::min(sheet.rows(), most); ++record) {
        for (int field = 0; field < std::min(sheet.columns(), most); ++field) {
            const QString text = sheet.text(record, field);
            fuzz::expect(text.isEmpty() || sheet.kind(record, field) != Sheet::Kind::Empty,
                         "an empty cell with a text", text);
            sheet.number(record, field);
        }
        sheet.address(record, 0);
    }
    if (sheet.rows() > 0)
        sheet.text(sheet.rows() - 1, sheet.columns() - 1);
    fuzz::expect(passOver([&] { sheet.text(sheet.rows(), 0); }).has_value(),
                 "a record behind the last one");
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    const QString path = pathOf(u"kitap.xlsx"_s);
    Pieces pieces(input);
    ZipEntries parts;
    while (!input.startsWith("PK") && !pieces.atEnd() && parts.size() < 12) {
        const QByteArray name = pieces.bytes();
        const QByteArray part = pieces.bytes();
        const bool isKnown =
            std::ranges::any_of(parts, [&](const auto &entry) { return entry.first == name; });
        if (!name.isEmpty() && !name.endsWith('/') && !isKnown && isPlain(name))
            parts.append({name, part});
    }
    if (parts.isEmpty())
        store(path, input);
    else
        writeZip(path, parts);
    QStringList names;
    const auto failed = passOver([&] { names = readSheetNames(path); });
    for (const QString &name : names) {
        const auto unread = passOver([&] { walk(*readSheet(path, name)); });
        expect(!unread || unread->description().startsWith(path + u" okunamadı: "_s),
               "a failure that names no file", unread ? unread->description() : QString());
    }
    if (failed) {
        expect(failed->description().startsWith(path + u" okunamadı: "_s),
               "a failure that names no file", failed->description());
        expect(passOver([&] { readSheet(path, u"A"_s); }).has_value(),
               "a sheet of a file without any");
    }
}
