// Text files by lines, against a plain reader that holds all of it; side files and initialisation
// files written and read back.

#include "store/sidefiles.h"
#include "base/codepage.h"
#include "base/failure.h"
#include "base/linereader.h"
#include "support/harness.h"
#include "text/ini.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

struct Line
{
    qint64 offset;
    QString text;
};

// Bytes up to CR LF, LF or CR, one look at a byte.
QList<Line> plainLines(const QByteArray &bytes)
{
    const bool utf8 = bytes.startsWith("\xEF\xBB\xBF");
    QList<Line> lines;
    qsizetype start = utf8 ? 3 : 0;
    for (qsizetype at = start; at < bytes.size(); ++at) {
        const bool ends = bytes[at] == '\n' || bytes[at] == '\r';
        if (!ends && at + 1 < bytes.size())
            continue;
        const QByteArray line =
            bytes.sliced(start, (ends ? at : at + 1) - start)
                .first(qMin((ends ? at : at + 1) - start, LineReader::longestLine));
        lines << Line{start, utf8 ? QString::fromUtf8(line) : fromCodePage(line)};
        if (bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n')
            ++at;
        start = at + 1;
    }
    return lines;
}

void readLinesBack(fuzz::Pieces &pieces)
{
    const QByteArray bytes = fuzz::shifted(pieces);
    const QString path = fuzz::pathOf(u"satirlar.txt"_s);
    fuzz::store(path, bytes);
    const QList<Line> plain = plainLines(bytes);
    LineReader reader(path);
    for (const Line &line : plain) {
        fuzz::expect(reader.next(), "the line reader ends too early");
        fuzz::expectSame(reader.line().toString(), line.text, "a line differs from the plain one");
        fuzz::expect(reader.offset() == line.offset, "a line begins elsewhere");
    }
    fuzz::expect(!reader.next(), "the line reader gives a line too many");
    for (qsizetype i = plain.size() - 1; i >= 0; i -= 1 + i / 8) {
        reader.seek(plain[i].offset);
        fuzz::expect(reader.next(), "no line where one was");
        fuzz::expectSame(reader.line().toString(), plain[i].text, "a line sought differs");
    }
}

void writeLinesBack(fuzz::Pieces &pieces)
{
    const QString path = fuzz::pathOf(u"yan.kvz"_s);
    const QByteArray before = pieces.bytes();
    fuzz::store(path, before);
    const QStringList lines = pieces.texts();
    if (passOver([&] { writeLines(path, lines); })) {
        fuzz::expectSame(fuzz::contents(path), before, "a write that failed changed the file");
        return;
    }
    const QStringList read = readAllLines(path);
    fuzz::expect(read.size() == lines.size(), "another count of lines came back");
    for (qsizetype i = 0; i < lines.size(); ++i) {
        const bool isMark = i == 0 && toCodePage(lines[0]).startsWith("\xEF\xBB\xBF");
        if (isMark) // the letters of the UTF-8 mark at its beginning change what a file is
            return;
        fuzz::expectSame(read[i], fuzz::asWritten(lines[i]), "another line came back");
    }
    QString value = readSingleValue(path);
    fuzz::expect(!value.contains(u','), "a single value with a comma", value);
}

void readIniBack(fuzz::Pieces &pieces)
{
    const QString path = fuzz::pathOf(u"ayar.ini"_s);
    fuzz::store(path, pieces.bytes());
    const QString section = pieces.text();
    const QString key = pieces.text();
    const QString value = pieces.text();
    const QString other = pieces.text();
    inioku(section, key, path);
    const QString before = inioku(section, other, path);
    iniyaz(section, key, value, path);
    const auto isPlain = [](const QString &text) {
        return !text.isEmpty() && text == fuzz::asWritten(text) && text == text.trimmed() &&
               !text.contains(u'\n') && !text.contains(u'\r') && !text.contains(QChar(0));
    };
    if (!isPlain(section) || section.contains(u']') || !isPlain(key) || key.contains(u'=') ||
        key.startsWith(u'[') || !isPlain(value) || value.size() > 255 ||
        QStringView(u"\"'").contains(value.back()))
        return;
    fuzz::expectSame(inioku(section, key, path), value, "another value came back");
    if (isPlain(other) && other.compare(key, Qt::CaseInsensitive) != 0)
        fuzz::expectSame(inioku(section, other, path), fuzz::asWritten(before),
                         "another key lost its value");
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    switch (pieces.choice(3)) {
    case 0:
        return readLinesBack(pieces);
    case 1:
        return writeLinesBack(pieces);
    default:
        return readIniBack(pieces);
    }
}
