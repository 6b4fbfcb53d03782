#pragma once

#include <QByteArray>
#include <QString>
#include <QtEndian>

namespace kervan {

/// Packet types of the protocol.
enum class TdsPacket : quint8 { Batch = 1, Answer = 4, Attention = 6, Login = 16, Prelogin = 18 };

/// Puts little-endian numbers and UTF-16 texts one after the other.
class TdsWriter
{
public:
    template<class Number>
    TdsWriter &number(Number value)
    {
        const Number little = qToLittleEndian(value);
        m_bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
        return *this;
    }
    TdsWriter &raw(const QByteArray &bytes)
    {
        m_bytes += bytes;
        return *this;
    }
    TdsWriter &byte(int value) { return number(quint8(value)); }
    TdsWriter &text(QStringView text);
    /// A text behind the count of its characters.
    template<class Count>
    TdsWriter &counted(QStringView characters)
    {
        return number(Count(characters.size())).text(characters);
    }
    /// A token behind its kind and the count of its bytes.
    TdsWriter &token(int kind, const TdsWriter &content)
    {
        return byte(kind).number(quint16(content.m_bytes.size())).raw(content.m_bytes);
    }
    const QByteArray &bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
};

/// A little-endian number; 0 beyond the end.
template<class Number>
Number tdsNumber(const QByteArray &bytes, qsizetype at)
{
    if (at + qsizetype(sizeof(Number)) > bytes.size())
        return 0;
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

/// A text of UTF-16 characters, as far as there are bytes.
QString tdsText(const QByteArray &bytes, qsizetype at, qsizetype characters);

struct TdsLogin
{
    QString user;
    QString password;
    QString server; ///< as the client calls it
    QString database;
};
TdsLogin readLogin(const QByteArray &message);

/// The statement of a batch, without the headers before it.
QString readBatch(const QByteArray &message);

/// A message cut into packets.
QByteArray tdsPackets(TdsPacket type, const QByteArray &message);

/// The answer to a prelogin: no encryption.
QByteArray preloginAnswer();
QByteArray loginAnswer(const QString &database);
QByteArray errorToken(int error, const QString &sentence);

/// The token that ends an answer.
enum class TdsEnd : quint16 {
    Good = 0x00,
    More = 0x01,
    Error = 0x02,
    Counted = 0x10,
    Cancelled = 0x20
};
QByteArray doneToken(TdsEnd end, qsizetype rows = 0);

/// A column of an answer, by the type that its table declares.
class TdsColumn
{
public:
    TdsColumn(const QString &name, const QString &declared);
    void writeHead(TdsWriter &writer) const;
    void writeValue(TdsWriter &writer, const QVariant &value) const;

private:
    enum class Type : quint8 { Int = 0x26, Decimal = 0x6A, Narrow = 0xA7, Wide = 0xE7 };
    void writeText(TdsWriter &writer, const QVariant &value) const;

    QString m_name;
    Type m_type = Type::Wide;
    int m_size = 0;  ///< bytes of a value at most, digits of a decimal; 0: a text of any length
    int m_scale = 0; ///< digits of a decimal behind its point
};

} // namespace kervan
