// Reads broken workbooks: fuzz_workbook ROUNDS [SEED]
// Each round bends a generated workbook: the file itself, a part of an .xlsx that is packed again,
// or the records of an .xls that are put into a whole container again. What still is a sheet is
// walked; all else has to be refused in words that name the file. The closing checks are that some
// were read, some were refused, and that the memory stayed small.

#include "base/failure.h"
#include "bend.h"
#include "support/memory.h"
#include "support/xlswriter.h"
#include "support/ziparchive.h"
#include "workbook/workbook.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <zip.h>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr double mostMegabytes = 800; // the sanitizers hold back what is freed

ZipEntries readZip(const QString &path)
{
    ZipEntries entries;
    zip_t *const archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, nullptr);
    if (!archive)
        qFatal("no archive: %s", qPrintable(path));
    const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0));
    for (zip_uint64_t i = 0; i < count; ++i) {
        zip_stat_t about;
        zip_stat_index(archive, i, 0, &about);
        QByteArray contents(static_cast<qsizetype>(about.size), '\0');
        zip_file_t *const file = zip_fopen_index(archive, i, 0);
        if (!file || zip_fread(file, contents.data(), about.size) != qint64(about.size))
            qFatal("not read: %s", about.name);
        zip_fclose(file);
        entries.append({about.name, contents});
    }
    zip_discard(archive);
    return entries;
}

BookRow row(int i)
{
    return {u"Ünvan %1"_s.arg(i),
            i * 1.25,
            {i, u"00000"_s},
            QDate(2024, 1, 1).addDays(i),
            i % 2 != 0,
            BookCell::Formula{u"=A1"_s, u"metin"_s},
            BookCell::emptyUnder(u"0.00"_s),
            i == 3 ? u"uzun "_s.repeated(4000) : u"kısa"_s};
}

class Bender
{
public:
    Bender(const QString &folder, quint32 seed)
        : m_path(folder + u"/bent.xlsx"_s)
        , m_random(seed)
    {
        writeWorkbook(m_path, u"A"_s, 20, row);
        m_xlsx = contents();
        m_parts = readZip(m_path);
        writeXls(m_path, u"A"_s, 20, row);
        m_xls = contents();
        // The only stream stands behind the header, a sector long, and before the directory.
        m_records = m_xls.sliced(512, m_xls.indexOf("R\0o\0o\0t\0"_ba) - 512);
    }

    const QString &path() const { return m_path; }

    void makeNext()
    {
        switch (m_random.bounded(6)) {
        case 0:
            store(bent(m_xlsx, {"PK\1\2", "PK\3\4", "\xFF\xFF"}));
            break;
        case 1:
            store(bent(m_xls, {"\xFE\xFF\xFF\xFF", "\xFF\xFF", "\0\0\0\0"_ba}));
            break;
        case 2:
        case 3:
            store(compoundFile({{u"Workbook"_s, bentRecords()}}));
            break;
        default:
            writeZip(m_path, bentParts());
            break;
        }
    }

private:
    QByteArray contents() const
    {
        QFile file(m_path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void store(const QByteArray &bytes)
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("not written");
    }
    QByteArray bent(QByteArray bytes, const QList<QByteArray> &words)
    {
        bend(bytes, m_random, words);
        return bytes;
    }
    // Bytes are changed but none moved, so that the records behind them are reached.
    QByteArray bentRecords()
    {
        QByteArray records = m_records;
        for (int i = m_random.bounded(1, 8); i > 0; --i)
            records[m_random.bounded(int(records.size()))] =
                m_random.bounded(3) == 0 ? char(0xFF) : char(m_random.bounded(256));
        return m_random.bounded(4) == 0 ? bent(records, {"\x3C\0\1\0\1"_ba}) : records;
    }
    ZipEntries bentParts()
    {
        ZipEntries parts = m_parts;
        QByteArray &part = parts[m_random.bounded(int(parts.size()))].second;
        part = bent(part, {"<c r='XFD1048576'><v>1</v></c>", "&x;", "<!DOCTYPE x>", "<!--", "]]>",
                           "<![CDATA[", "</row>", "<row>", "<v>", "</c>", "'", "\"", "_xD83D_",
                           "t='d'", "1e308", "s='99999999999'", "r='AAAAAAAA1'", "&#xFFFFFFFF;"});
        return parts;
    }

    QString m_path;
    QRandomGenerator m_random;
    QByteArray m_xlsx;
    QByteArray m_xls;
    QByteArray m_records;
    ZipEntries m_parts;
};

void walk(const Sheet &sheet)
{
    constexpr int mostFields = 200000;
    int fields = 0;
    for (int record = 0; record < sheet.rows(); ++record) {
        for (int field = 0; field < sheet.columns() && fields < mostFields; ++field, ++fields)
            sheet.text(record, field);
    }
    if (sheet.rows() > 0)
        sheet.text(sheet.rows() - 1, sheet.columns() - 1);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int rounds = argc > 1 ? atoi(argv[1]) : 1000;
    QTextStream out(stdout);
    QTemporaryDir folder;
    out << "Workbooks are bent in " << folder.path() << Qt::endl;
    Bender bender(folder.path(), argc > 2 ? quint32(atoi(argv[2])) : 1);
    int refused = 0;
    for (int round = 0; round < rounds; ++round) {
        bender.makeNext();
        const auto failed = passOver([&] { walk(*readSheet(bender.path(), u"A"_s)); });
        refused += failed ? 1 : 0;
        if (failed && !failed->description().startsWith(bender.path() + u" okunamadı: "_s)) {
            out << "round " << round << ": " << failed->description() << Qt::endl;
            folder.setAutoRemove(false);
            return 1;
        }
    }
    out << rounds - refused << " bent workbooks read, " << refused << " refused, at most "
        << peakMegabytes() << " MB" << Qt::endl;
    return refused > 0 && refused < rounds && peakMegabytes() < mostMegabytes ? 0 : 1;
}
