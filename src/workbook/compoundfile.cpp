#include "workbook/compoundfile.h"

#include "workbook/damage.h"

#include <algorithm>

namespace kervan {

namespace {

constexpr quint32 lastSector = 0xFFFFFFFA; // beyond it are marks: end of chain, free, table
constexpr qsizetype headerSize = 512;
constexpr qsizetype entrySize = 128;
constexpr int smallSectorBits = 6;
constexpr qint64 smallStreams = 4096; // shorter streams stand in small sectors
constexpr qsizetype tableSectorsInHeader = 109;

enum EntryKind : quint8 { StreamEntry = 2, RootEntry = 5 };

void appendNumbers(QList<quint32> &numbers, QByteArrayView bytes)
{
    for (qsizetype at = 0; at + 4 <= bytes.size(); at += 4)
        numbers.append(numberAt<quint32>(bytes, at));
}

struct Entry
{
    QString name;
    quint8 kind;
    quint32 left;
    quint32 right;
    quint32 child;
    quint32 first;
    qint64 size;
};

Entry entry(QByteArrayView directory, quint32 index)
{
    const qsizetype at = qsizetype(index) * entrySize;
    if (at + entrySize > directory.size())
        failDamaged();
    const QByteArrayView bytes = directory.sliced(at, entrySize);
    Entry entry{.name = {},
                .kind = numberAt<quint8>(bytes, 66),
                .left = numberAt<quint32>(bytes, 68),
                .right = numberAt<quint32>(bytes, 72),
                .child = numberAt<quint32>(bytes, 76),
                .first = numberAt<quint32>(bytes, 116),
                .size = numberAt<quint32>(bytes, 120)};
    const qsizetype nameBytes = std::min<qsizetype>(numberAt<quint16>(bytes, 64), 64);
    for (qsizetype i = 0; i + 2 < nameBytes; i += 2) // the last one closes the name
        entry.name += QChar(numberAt<quint16>(bytes, i));
    return entry;
}

} // namespace

CompoundFile::CompoundFile(QByteArrayView bytes)
    : m_bytes(bytes)
{
    if (!bytes.startsWith(mark) || bytes.size() < headerSize)
        failDamaged();
    m_sectorBits = numberAt<quint16>(bytes, 30);
    if (m_sectorBits != 9 && m_sectorBits != 12)
        failDamaged();
    readTable();
    const QByteArray directory = chain(numberAt<quint32>(bytes, 48), -1);
    appendNumbers(m_smallNext, chain(numberAt<quint32>(bytes, 60), -1));
    readDirectory(directory);
}

QByteArrayView CompoundFile::sector(quint32 number) const
{
    const qint64 size = qint64(1) << m_sectorBits;
    const qint64 at = (qint64(number) + 1) << m_sectorBits;
    if (number >= lastSector || at >= m_bytes.size())
        failDamaged();
    return m_bytes.sliced(at, std::min(size, m_bytes.size() - at)); // the last may be cut short
}

// The table's own sectors are listed in the header, and from there on in a chain of lists.
void CompoundFile::readTable()
{
    QList<quint32> places;
    appendNumbers(places, m_bytes.sliced(76, headerSize - 76));
    places.resize(tableSectorsInHeader, lastSector);
    const qsizetype mostSectors = (m_bytes.size() >> m_sectorBits) + 1;
    auto list = numberAt<quint32>(m_bytes, 68);
    for (qsizetype lists = 0; list < lastSector; ++lists) {
        if (lists > mostSectors)
            failDamaged();
        appendNumbers(places, sector(list));
        list = places.takeLast();
    }
    for (const quint32 place : std::as_const(places)) {
        if (place < lastSector && m_next.size() < mostSectors)
            appendNumbers(m_next, sector(place));
    }
}

// All sectors of a chain, or as many as hold so many bytes.
QByteArray CompoundFile::chain(quint32 first, qint64 size) const
{
    QByteArray bytes;
    bytes.reserve(std::clamp<qint64>(size, 0, m_bytes.size()));
    for (quint32 at = first; at < lastSector && (size < 0 || bytes.size() < size);
         at = m_next[at]) {
        bytes += sector(at);
        if (bytes.size() > m_bytes.size() || at >= m_next.size())
            failDamaged();
    }
    if (size >= 0) {
        if (bytes.size() < size)
            failDamaged();
        bytes.truncate(size);
    }
    return bytes;
}

QByteArray CompoundFile::smallChain(quint32 first, qint64 size) const
{
    QByteArray bytes;
    for (quint32 at = first; bytes.size() < size; at = m_smallNext[at]) {
        const qint64 place = qint64(at) << smallSectorBits;
        if (at >= m_smallNext.size() || place >= m_smallSectors.size())
            failDamaged();
        bytes += QByteArrayView(m_smallSectors)
                     .sliced(place,
                             std::min<qint64>(1 << smallSectorBits, m_smallSectors.size() - place));
    }
    bytes.truncate(size);
    return bytes;
}

// The children of the root are a tree of entries.
void CompoundFile::readDirectory(const QByteArray &directory)
{
    const Entry root = entry(directory, 0);
    if (root.kind != RootEntry)
        failDamaged();
    if (root.size > 0 && root.first < lastSector)
        m_smallSectors = chain(root.first, root.size);
    QList<quint32> waiting{root.child};
    qsizetype seen = 0;
    while (!waiting.isEmpty()) {
        const quint32 index = waiting.takeLast();
        if (index >= lastSector)
            continue;
        if (++seen > directory.size() / entrySize)
            failDamaged();
        const Entry child = entry(directory, index);
        waiting << child.left << child.right;
        if (child.kind == StreamEntry)
            m_streams.insert(child.name.toUpper(), {.first = child.first, .size = child.size});
    }
}

QByteArray CompoundFile::stream(const QString &name) const
{
    const auto found = m_streams.constFind(name.toUpper());
    if (found == m_streams.constEnd())
        failDamaged();
    return found->size < smallStreams ? smallChain(found->first, found->size)
                                      : chain(found->first, found->size);
}

} // namespace kervan
