#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace kervan::fuzz {

/// What a target defines: one input through its reader. What it returns without is well; a crash, a
/// sanitizer's report and expect() tell a finding.
void take(QByteArrayView input);

/// Ends the program with the two texts unless it holds.
void expect(bool holds, const char *what, const QString &one = {}, const QString &other = {});
void expectSame(const QByteArray &one, const QByteArray &other, const char *what);
void expectSame(const QString &one, const QString &other, const char *what);

/// Parts the pieces of an input. A byte, so that a mutation seldom makes or loses one; no reader
/// means anything by it.
inline constexpr char border = '\x1E';

/// The pieces of an input in their order. Behind the last one all are empty.
class Pieces
{
public:
    explicit Pieces(QByteArrayView input)
        : m_rest(input)
    {
    }
    bool atEnd() const { return m_atEnd; }
    QByteArray bytes();
    /// UTF-8, so that all letters are within reach.
    QString text() { return QString::fromUtf8(bytes()); }
    /// The first byte of a piece below `bound`; a digit counts as its value.
    int choice(int bound);
    /// All that are left.
    QList<QByteArray> rest();
    QStringList texts();

private:
    QByteArrayView m_rest;
    bool m_atEnd = false;
};

/// A source of three pieces: whether and where it is shifted, its beginning and its end. Behind a
/// "+" stands the place of the end, in two bytes, where the first of the pieces in which a reader
/// takes a file is to be full: blanks in front of the end see to that.
QByteArray shifted(Pieces &pieces, qsizetype pieceOfReader = 65536);

/// The lines of a source, all at once.
QStringList plainLines(QByteArrayView bytes);

/// Without the blanks at both ends, one look at a letter.
QString bare(QString text);

/// A folder of this process, in memory where the system has such.
QString folder();
/// A file of it, or of any folder.
QString pathOf(const QString &name);
void store(const QString &path, QByteArrayView bytes);
/// Empty where there is none.
QByteArray contents(const QString &path);

/// The text as a document can hold it.
QString asWritten(const QString &text);

} // namespace kervan::fuzz
