#include "support/harness.h"

#include "base/codepage.h"
#include "base/linereader.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

namespace kervan::fuzz {

using namespace Qt::StringLiterals;

void expect(bool holds, const char *what, const QString &one, const QString &other)
{
    if (holds)
        return;
    std::fprintf(stderr, "FINDING: %s\n  one:   %s\n  other: %s\n", what,
                 qPrintable(one.left(2000)), qPrintable(other.left(2000)));
    std::abort();
}

void expectSame(const QByteArray &one, const QByteArray &other, const char *what)
{
    if (one != other)
        expect(false, what, fromCodePage(one), fromCodePage(other));
}

void expectSame(const QString &one, const QString &other, const char *what)
{
    if (one != other)
        expect(false, what, one, other);
}

QByteArray Pieces::bytes()
{
    const qsizetype end = m_rest.indexOf(border);
    const QByteArray piece = (end < 0 ? m_rest : m_rest.first(end)).toByteArray();
    m_rest = end < 0 ? QByteArrayView() : m_rest.sliced(end + 1);
    m_atEnd = m_atEnd || end < 0;
    return piece;
}

int Pieces::choice(int bound)
{
    const QByteArray piece = bytes();
    const int first = piece.isEmpty() ? 0 : static_cast<unsigned char>(piece[0]);
    return (first >= '0' && first <= '9' ? first - '0' : first) % bound;
}

QList<QByteArray> Pieces::rest()
{
    QList<QByteArray> pieces;
    while (!atEnd())
        pieces << bytes();
    return pieces;
}

QStringList Pieces::texts()
{
    QStringList texts;
    while (!atEnd())
        texts << text();
    return texts;
}

QByteArray shifted(Pieces &pieces, qsizetype pieceOfReader)
{
    const QByteArray shift = pieces.bytes();
    const QByteArray beginning = pieces.bytes();
    const QByteArray end = pieces.bytes();
    if (!shift.startsWith('+') || beginning.size() > pieceOfReader / 2)
        return beginning + end;
    const QByteArray told = shift.sliced(1).leftJustified(2, '\0');
    const qsizetype place =
        (static_cast<unsigned char>(told[0]) + 256 * static_cast<unsigned char>(told[1])) %
        (end.size() + 1);
    return beginning + QByteArray(pieceOfReader - beginning.size() - place, ' ') + end;
}

// Decoded line by line, as broken UTF-8 gives other letters where a line end cuts it, and each only
// as far as a reader takes it.
QStringList plainLines(QByteArrayView bytes)
{
    const bool isUtf8 = bytes.startsWith(utf8Mark);
    QString text =
        isUtf8 ? QString::fromLatin1(bytes.sliced(utf8Mark.size())) : fromTextFile(bytes);
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines) {
        line.truncate(LineReader::longestLine);
        if (isUtf8)
            line = QString::fromUtf8(line.toLatin1());
    }
    return lines;
}

QString bare(QString text)
{
    while (text.startsWith(u' '))
        text.remove(0, 1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

QString folder()
{
    static const QTemporaryDir own;
    return own.path();
}

QString pathOf(const QString &name)
{
    return folder() + u'/' + name;
}

void store(const QString &path, QByteArrayView bytes)
{
    QFile file(path);
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes.data(), bytes.size()) == bytes.size();
    expect(written, "a file of the harness can't be written", path);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString asWritten(const QString &text)
{
    return fromCodePage(toCodePage(text));
}

} // namespace kervan::fuzz

// The names are those that the library asks for.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    kervan::fuzz::take({reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)});
    return 0;
}
