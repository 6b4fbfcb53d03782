#include "support/tds/tdswire.h"

#include "base/codepage.h"

#include <QVariant>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype packetSize = 4096;
constexpr auto packetSizeText = u"4096";

// Turkish_CI_AS: texts of one byte a character are in Windows-1254.
QByteArray collation()
{
    return QByteArray::fromHex("1F04D00000");
}

int decimalBytes(int digits)
{
    return digits <= 9 ? 4 : 8;
}

} // namespace

TdsWriter &TdsWriter::text(QStringView text)
{
    for (const QChar character : text)
        number(character.unicode());
    return *this;
}

QString tdsText(const QByteArray &bytes, qsizetype at, qsizetype characters)
{
    QString text;
    for (qsizetype i = 0; i < characters && at + 2 * i + 1 < bytes.size(); ++i)
        text += QChar(tdsNumber<quint16>(bytes, at + 2 * i));
    return text;
}

TdsLogin readLogin(const QByteArray &message)
{
    // Each text is told by its place in the message and the count of its characters.
    const auto place = [&](qsizetype at) {
        return tdsNumber<quint16>(message, at);
    };
    const auto text = [&](qsizetype at) {
        return tdsText(message, place(at), place(at + 2));
    };
    TdsLogin login{text(40), {}, text(52), text(68)};
    QByteArray hidden = message.mid(place(44), 2 * place(46));
    for (char &byte : hidden) {
        const auto plain = quint8(quint8(byte) ^ 0xA5);
        byte = char(plain << 4 | plain >> 4);
    }
    login.password = tdsText(hidden, 0, hidden.size() / 2);
    return login;
}

QString readBatch(const QByteArray &message)
{
    const auto headers = qsizetype(tdsNumber<quint32>(message, 0));
    return tdsText(message, headers, (message.size() - headers) / 2);
}

QByteArray tdsPackets(TdsPacket type, const QByteArray &message)
{
    constexpr qsizetype headSize = 8;
    constexpr qsizetype room = packetSize - headSize;
    QByteArray packets;
    for (qsizetype at = 0; at < message.size(); at += room) {
        const QByteArray piece = message.mid(at, room);
        const bool last = at + room >= message.size();
        const auto size = qToBigEndian(quint16(piece.size() + headSize));
        packets += TdsWriter()
                       .byte(int(type))
                       .byte(last ? 1 : 0)
                       .raw({reinterpret_cast<const char *>(&size), sizeof size})
                       .number(quint32(0))
                       .raw(piece)
                       .bytes();
    }
    return packets;
}

QByteArray preloginAnswer()
{
    // Options with the place and length of their values: version, encryption (2: not supported).
    return QByteArray::fromHex("00000B0006"
                               "0100110001"
                               "FF"
                               "0F0000000000"
                               "02");
}

QByteArray loginAnswer(const QString &database)
{
    constexpr int environment = 0xE3;
    constexpr int loginGranted = 0xAD;
    constexpr int databaseChange = 1;
    constexpr int packetSizeChange = 4;
    constexpr int collationChange = 7;
    TdsWriter answer;
    answer.token(environment,
                 TdsWriter().byte(databaseChange).counted<quint8>(database).counted<quint8>({}));
    answer.token(environment, TdsWriter().byte(collationChange).byte(5).raw(collation()).byte(0));
    answer.token(loginGranted, TdsWriter()
                                   .byte(1)
                                   .raw(QByteArray::fromHex("74000004"))
                                   .counted<quint8>(u"Microsoft SQL Server")
                                   .raw(QByteArray::fromHex("0F000000")));
    answer.token(environment, TdsWriter()
                                  .byte(packetSizeChange)
                                  .counted<quint8>(packetSizeText)
                                  .counted<quint8>(packetSizeText));
    return answer.bytes() + doneToken(TdsEnd::Good);
}

QByteArray errorToken(int error, const QString &sentence)
{
    constexpr int errorKind = 0xAA;
    constexpr int severity = 14;
    return TdsWriter()
        .token(errorKind, TdsWriter()
                              .number(qint32(error))
                              .byte(1)
                              .byte(severity)
                              .counted<quint16>(sentence)
                              .counted<quint8>(u"STANDIN")
                              .counted<quint8>({})
                              .number(quint32(1)))
        .bytes();
}

QByteArray doneToken(TdsEnd end, qsizetype rows)
{
    constexpr int done = 0xFD;
    return TdsWriter()
        .byte(done)
        .number(quint16(end))
        .number(quint16(0))
        .number(quint64(rows))
        .bytes();
}

TdsColumn::TdsColumn(const QString &name, const QString &declared)
    : m_name(name)
{
    const QString type = declared.section(u'(', 0, 0).toLower();
    const QString sizes = declared.section(u'(', 1).section(u')', 0, 0);
    const int first = sizes.section(u',', 0, 0).toInt();
    static const QHash<QString, int> integers{
        {u"tinyint"_s, 1}, {u"smallint"_s, 2}, {u"int"_s, 4}, {u"bigint"_s, 8}};
    if (integers.contains(type)) {
        m_type = Type::Int;
        m_size = integers[type];
    } else if (type == u"decimal"_s) {
        m_type = Type::Decimal;
        m_size = first;
        m_scale = sizes.section(u',', 1).toInt();
    } else {
        m_type = type == u"varchar"_s ? Type::Narrow : Type::Wide;
        m_size = m_type == Type::Narrow ? first : 2 * first;
    }
}

void TdsColumn::writeHead(TdsWriter &writer) const
{
    constexpr quint16 anyLength = 0xFFFF;
    constexpr quint16 nullable = 1;
    writer.number(quint32(0)).number(nullable).byte(int(m_type));
    if (m_type == Type::Narrow || m_type == Type::Wide)
        writer.number(m_size ? quint16(m_size) : anyLength).raw(collation());
    else if (m_type == Type::Decimal)
        writer.byte(1 + decimalBytes(m_size)).byte(m_size).byte(m_scale);
    else
        writer.byte(m_size);
    writer.counted<quint8>(m_name);
}

void TdsColumn::writeValue(TdsWriter &writer, const QVariant &value) const
{
    if (m_type == Type::Narrow || m_type == Type::Wide)
        return writeText(writer, value);
    if (value.isNull()) {
        writer.byte(0);
    } else if (m_type == Type::Decimal) {
        const qint64 digits =
            QString::number(value.toDouble(), 'f', m_scale).remove(u'.').toLongLong();
        const TdsWriter number = TdsWriter().number(quint64(qAbs(digits)));
        const int bytes = decimalBytes(m_size);
        writer.byte(1 + bytes).byte(digits < 0 ? 0 : 1).raw(number.bytes().left(bytes));
    } else {
        writer.byte(m_size).raw(TdsWriter().number(value.toLongLong()).bytes().left(m_size));
    }
}

void TdsColumn::writeText(TdsWriter &writer, const QVariant &value) const
{
    const QString text = value.toString();
    const QByteArray bytes =
        m_type == Type::Narrow ? toCodePage(text) : TdsWriter().text(text).bytes();
    if (m_size && value.isNull())
        writer.number(quint16(0xFFFF));
    else if (m_size)
        writer.number(quint16(bytes.size())).raw(bytes);
    else if (value.isNull())
        writer.number(~quint64(0));
    else if (bytes.isEmpty())
        writer.number(quint64(0)).number(quint32(0));
    else
        writer.number(quint64(bytes.size()))
            .number(quint32(bytes.size()))
            .raw(bytes)
            .number(quint32(0));
}

} // namespace kervan
