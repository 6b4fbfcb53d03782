#include "support/xlswriter.h"

#include <QFile>
#include <QHash>
#include <QtEndian>

#include <bit>
#include <cmath>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestRecord = 8224;
constexpr quint32 endOfChain = 0xFFFFFFFE;
constexpr quint32 freeSector = 0xFFFFFFFF;

template<class Number>
QByteArray little(Number number)
{
    QByteArray bytes(sizeof(Number), 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray word(int number)
{
    return little(static_cast<quint16>(number));
}

QByteArray wide(const QString &text)
{
    QByteArray bytes;
    for (const QChar c : text)
        bytes += word(c.unicode());
    return bytes;
}

QByteArray padded(QByteArray bytes, qsizetype to)
{
    bytes.append((to - bytes.size() % to) % to, '\0');
    return bytes;
}

} // namespace

QByteArray biffRecord(quint16 type, const QByteArray &data)
{
    QByteArray bytes;
    qsizetype at = 0;
    do {
        const QByteArray piece = data.mid(at, longestRecord);
        bytes += word(at == 0 ? type : 0x3C) + word(static_cast<int>(piece.size())) + piece;
        at += longestRecord;
    } while (at < data.size());
    return bytes;
}

// Header, the streams one behind the other, the directory, then the table and the lists of it.
// Streams of less than 4096 bytes stand in the small sectors, which are the root's stream.
QByteArray compoundFile(const QList<std::pair<QString, QByteArray>> &streams, int sectorBits)
{
    const qsizetype sectorSize = qsizetype(1) << sectorBits;
    QByteArray body;
    QByteArray small;
    QList<quint32> next;
    QList<quint32> smallNext;
    const auto chain = [](QList<quint32> &table, qsizetype sectors) {
        const auto first = static_cast<quint32>(table.size());
        for (qsizetype i = 1; i < sectors; ++i)
            table << static_cast<quint32>(table.size()) + 1;
        if (sectors > 0)
            table << endOfChain;
        return sectors > 0 ? first : endOfChain;
    };
    const auto store = [&](const QByteArray &bytes) {
        body += padded(bytes, sectorSize);
        return chain(next, (bytes.size() + sectorSize - 1) / sectorSize);
    };
    const auto entry = [](const QString &name, int kind, quint32 child, quint32 right,
                          quint32 first, qsizetype size) {
        QByteArray bytes = wide(name).leftJustified(64, '\0');
        bytes += word(static_cast<int>(name.size() + 1) * 2) + char(kind) + char(1) +
                 little(freeSector) + little(right) + little(child) + QByteArray(36, '\0');
        return bytes + little(first) + little(static_cast<quint64>(size));
    };
    QByteArray entries;
    for (qsizetype i = 0; i < streams.size(); ++i) {
        const auto &[name, bytes] = streams[i];
        const bool isSmall = bytes.size() < 4096;
        const quint32 first = isSmall ? chain(smallNext, (bytes.size() + 63) / 64) : store(bytes);
        if (isSmall)
            small += padded(bytes, 64);
        const quint32 right = i + 1 < streams.size() ? static_cast<quint32>(i + 2) : freeSector;
        entries += entry(name, 2, freeSector, right, first, bytes.size());
    }
    const quint32 smallFirst = store(small);
    QByteArray smallTable;
    for (const quint32 sector : std::as_const(smallNext))
        smallTable += little(sector);
    while (smallTable.size() % sectorSize != 0)
        smallTable += little(freeSector);
    const quint32 smallTableFirst = store(smallTable);
    const quint32 directory = store(entry(u"Root Entry"_s, 5, streams.isEmpty() ? freeSector : 1,
                                          freeSector, smallFirst, small.size()) +
                                    entries);

    const qsizetype each = sectorSize / 4;
    qsizetype tables = 0;
    qsizetype lists = 0;
    while (tables * each < next.size() + tables + lists) {
        ++tables;
        lists = tables > 109 ? (tables - 109 + each - 2) / (each - 1) : 0;
    }
    const qsizetype firstTable = next.size();
    const qsizetype firstList = firstTable + tables;
    next.append(QList<quint32>(tables, 0xFFFFFFFD));
    next.append(QList<quint32>(lists, 0xFFFFFFFC));
    next.resize(tables * each, freeSector);
    for (const quint32 sector : std::as_const(next))
        body += little(sector);
    QByteArray header = QByteArray("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8) + QByteArray(16, '\0') +
                        word(0x3E) + word(sectorBits == 9 ? 3 : 4) + word(0xFFFE) +
                        word(sectorBits) + word(6) + QByteArray(10, '\0') +
                        little(static_cast<quint32>(tables)) + little(directory) +
                        little(quint32(0)) + little(quint32(4096)) + little(smallTableFirst) +
                        little(static_cast<quint32>(smallTable.size() / sectorSize)) +
                        little(lists > 0 ? static_cast<quint32>(firstList) : endOfChain) +
                        little(static_cast<quint32>(lists));
    for (qsizetype i = 0; i < 109 + lists * (each - 1); ++i) {
        QByteArray &to = i < 109 ? header : body;
        to += little(i < tables ? static_cast<quint32>(firstTable + i) : freeSector);
        if (i >= 109 && (i - 109) % (each - 1) == each - 2) {
            const qsizetype list = (i - 109) / (each - 1) + 1;
            body += little(list < lists ? static_cast<quint32>(firstList + list) : endOfChain);
        }
    }
    return padded(header, sectorSize) + body;
}

namespace {

// What tells cells; no fonts, windows and styles.
class XlsWriter
{
public:
    XlsWriter() { format({}); }

    void add(const BookSheet &sheet, int rows, const std::function<BookRow(int)> &makeRow)
    {
        constexpr int mostRows = 65536;
        if (rows > mostRows)
            qFatal("%d rows don't fit", rows);
        QByteArray part = start(0x10);
        for (int row = 0; row < rows; ++row) {
            const BookRow made = makeRow(row);
            for (qsizetype column = 0; column < made.size(); ++column)
                addCell(part, row, static_cast<int>(column), made[column]);
        }
        m_sheets << std::pair(sheet, part + biffRecord(0x0A, {}));
    }

    void write(const QString &path, bool starts1904)
    {
        QByteArray stream = start(0x05) + biffRecord(0x22, word(starts1904 ? 1 : 0));
        for (qsizetype i = 1; i < m_formats.size(); ++i) {
            const QString &code = m_formats[i];
            stream +=
                biffRecord(0x41E, word(static_cast<int>(163 + i)) +
                                      word(static_cast<int>(code.size())) + char(1) + wide(code));
        }
        for (qsizetype i = 0; i < m_formats.size(); ++i)
            stream += biffRecord(0xE0, word(0) + word(i == 0 ? 0 : static_cast<int>(163 + i)) +
                                           QByteArray(16, '\0'));
        appendSheets(stream, sharedTexts());
        QFile file(path);
        const QByteArray bytes = compoundFile({{u"Workbook"_s, stream}});
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("not written: %s", qPrintable(path));
    }

private:
    static QByteArray start(int kind)
    {
        return biffRecord(0x809, word(0x600) + word(kind) + word(0x0DBB) + word(0x07CC) +
                                     little(quint32(0x41)) + little(quint32(6)));
    }

    int format(const QString &code)
    {
        qsizetype at = m_formats.indexOf(code);
        if (at < 0) {
            at = m_formats.size();
            m_formats << code;
        }
        return static_cast<int>(at);
    }

    void addCell(QByteArray &to, int row, int column, const BookCell &cell)
    {
        const QByteArray head = word(row) + word(column) + word(format(cell.format));
        if (const auto *text = std::get_if<QString>(&cell.value)) {
            to += biffRecord(0xFD, head + little(sharedText(*text)));
        } else if (const auto *truth = std::get_if<bool>(&cell.value)) {
            to += biffRecord(0x205, head + char(*truth ? 1 : 0) + char(0));
        } else if (const auto *number = std::get_if<double>(&cell.value)) {
            to += numberRecord(head, *number);
        } else if (const auto *moment = std::get_if<QDateTime>(&cell.value)) {
            to += numberRecord(head, serialOf(*moment));
        } else if (const auto *formula = std::get_if<BookCell::Formula>(&cell.value)) {
            to += formulaRecords(head, *formula);
        } else if (!cell.format.isEmpty()) {
            to += biffRecord(0x201, head);
        }
    }

    // The tokens are those of "0": only the result is read.
    static QByteArray formulaRecords(const QByteArray &head, const BookCell::Formula &formula)
    {
        const auto *text = std::get_if<QString>(&formula.result);
        const QByteArray result =
            text ? QByteArray(6, '\0') + word(0xFFFF)
                 : little(std::bit_cast<quint64>(std::get<double>(formula.result)));
        QByteArray bytes = biffRecord(0x06, head + result + word(0) + little(quint32(0)) + word(3) +
                                                char(0x1E) + word(0));
        if (text)
            bytes +=
                biffRecord(0x207, word(static_cast<int>(text->size())) + char(1) + wide(*text));
        return bytes;
    }

    static QByteArray numberRecord(const QByteArray &head, double number)
    {
        if (number == std::trunc(number) && std::abs(number) < 1e8)
            return biffRecord(
                0x27E, head + little(static_cast<quint32>(static_cast<qint32>(number) * 4 + 2)));
        return biffRecord(0x203, head + little(std::bit_cast<quint64>(number)));
    }

    quint32 sharedText(const QString &text)
    {
        const auto found = m_textPlaces.constFind(text);
        if (found != m_textPlaces.constEnd())
            return *found;
        m_textPlaces.insert(text, static_cast<quint32>(m_texts.size()));
        m_texts << text;
        return static_cast<quint32>(m_texts.size()) - 1;
    }

    // A text that doesn't fit goes on in the next record, which says its width again.
    QByteArray sharedTexts() const
    {
        const QByteArray count = little(static_cast<quint32>(m_texts.size()));
        QList<QByteArray> pieces{count + count};
        for (const QString &text : m_texts) {
            if (pieces.constLast().size() + 5 > longestRecord)
                pieces << QByteArray();
            pieces.last() += word(static_cast<int>(text.size())) + char(1);
            for (const QChar c : text) {
                if (pieces.constLast().size() + 2 > longestRecord)
                    pieces << QByteArray(1, char(1));
                pieces.last() += word(c.unicode());
            }
        }
        QByteArray bytes = biffRecord(0xFC, pieces.takeFirst());
        for (const QByteArray &piece : std::as_const(pieces))
            bytes += biffRecord(0x3C, piece);
        return bytes;
    }

    void appendSheets(QByteArray &stream, const QByteArray &texts) const
    {
        qsizetype place = stream.size() + texts.size() + 4;
        for (const auto &[sheet, part] : m_sheets)
            place += 4 + 8 + sheet.name.size() * 2;
        for (const auto &[sheet, part] : m_sheets) {
            stream += biffRecord(0x85, little(static_cast<quint32>(place)) + char(sheet.hidden) +
                                           char(0) + char(sheet.name.size()) + char(1) +
                                           wide(sheet.name));
            place += part.size();
        }
        stream += texts + biffRecord(0x0A, {});
        for (const auto &[sheet, part] : m_sheets)
            stream += part;
    }

    QStringList m_formats;
    QStringList m_texts;
    QHash<QString, quint32> m_textPlaces;
    QList<std::pair<BookSheet, QByteArray>> m_sheets;
};

} // namespace

void writeXls(const QString &path, const QList<BookSheet> &sheets, bool starts1904)
{
    XlsWriter writer;
    for (const BookSheet &sheet : sheets)
        writer.add(sheet, static_cast<int>(sheet.rows.size()),
                   [&](int row) { return sheet.rows[row]; });
    writer.write(path, starts1904);
}

void writeXls(const QString &path, const QString &sheetName, const QList<BookRow> &rows)
{
    writeXls(path, {{.name = sheetName, .rows = rows}});
}

void writeXls(const QString &path, const QString &sheetName, int rows,
              const std::function<BookRow(int)> &makeRow)
{
    XlsWriter writer;
    writer.add({.name = sheetName, .rows = {}}, rows, makeRow);
    writer.write(path, false);
}

} // namespace kervan
