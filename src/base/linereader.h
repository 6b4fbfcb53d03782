#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace kervan {

/// Reads a text file line by line from start to end, whatever its size. Lines end in CR LF, LF or
/// CR; the last one may lack its end. The text is Windows-1254, or UTF-8 if the file begins with
/// that mark.
class LineReader
{
public:
    /// Records of fixed columns end far before this many bytes; what a line has beyond is dropped,
    /// so that a file without line ends cannot fill the memory.
    static constexpr qsizetype longestLine = 65536;

    /// Opens the file; a Failure names it and tells why it can't be read.
    explicit LineReader(const QString &path);

    /// Moves to the next line; false at the end of the file. A Failure tells a read error.
    bool next();
    /// The current line without its end; valid until the next call of next() or seek().
    QStringView line() const { return m_line; }
    /// Where the current line begins in the file, in bytes.
    qint64 offset() const { return m_lineOffset; }
    /// Makes the line at `offset`, taken from offset(), the next one.
    void seek(qint64 offset);

private:
    bool fill();
    QByteArrayView takePart();
    void append(QByteArrayView bytes);
    void decode(QByteArrayView bytes);
    void skipEnd();

    QFile m_file;
    QByteArray m_buffer;
    qsizetype m_at = 0;        // next byte of the buffer
    qint64 m_bufferOffset = 0; // where the buffer begins in the file
    QByteArray m_bytes;        // the line so far, when it crosses buffers
    QString m_line;
    qint64 m_lineOffset = 0;
    bool m_utf8 = false;
};

} // namespace kervan
