#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

namespace kervan {

/// The streams that stand directly in an OLE2 compound file held in memory. Embedded objects have
/// streams of the same names, deeper; those are left alone.
class CompoundFile
{
public:
    static constexpr QByteArrayView mark{"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", 8};

    /// `bytes` stay as they are while this lives. A Failure tells a damaged or cut off file.
    explicit CompoundFile(QByteArrayView bytes);

    // Names are the same in capitals, as some programs write them.
    bool has(const QString &name) const { return m_streams.contains(name.toUpper()); }
    /// The bytes of a stream; a damaged or missing one is a Failure.
    QByteArray stream(const QString &name) const;

private:
    struct Stream
    {
        quint32 first = 0;
        qint64 size = 0;
    };
    QByteArrayView sector(quint32 number) const;
    QByteArray chain(quint32 first, qint64 size) const;
    QByteArray smallChain(quint32 first, qint64 size) const;
    void readTable();
    void readDirectory(const QByteArray &directory);

    QByteArrayView m_bytes;
    int m_sectorBits = 9;
    QList<quint32> m_next;      ///< by sector
    QList<quint32> m_smallNext; ///< by small sector
    QByteArray m_smallSectors;
    QHash<QString, Stream> m_streams; ///< by name in capitals
};

} // namespace kervan
