#pragma once

#include <QByteArray>
#include <QList>
#include <QRandomGenerator>

namespace kervan {

/// Bends bytes at up to a dozen places: one changed, some cut out, doubled or moved, the end cut
/// off, or one of the words put in.
inline void bend(QByteArray &bytes, QRandomGenerator &random, const QList<QByteArray> &words)
{
    const auto place = [&] {
        return qsizetype(random.bounded(qint64(bytes.size() + 1)));
    };
    const int bends = random.bounded(1, 12);
    for (int i = 0; i < bends && !bytes.isEmpty(); ++i) {
        const qsizetype at = place() % bytes.size();
        const qsizetype length = random.bounded(1, 200);
        switch (random.bounded(5)) {
        case 0:
            bytes[at] = char(random.bounded(256));
            break;
        case 1:
            bytes.remove(at, length);
            break;
        case 2:
            bytes.insert(place(), bytes.mid(at, length));
            break;
        case 3:
            bytes.insert(at, words[random.bounded(int(words.size()))]);
            break;
        default:
            bytes.truncate(at);
            break;
        }
    }
}

} // namespace kervan
