#pragma once

#include "check/documentreader.h"

#include <QHash>
#include <QString>

#include <memory>
#include <mutex>
#include <vector>

namespace kervan {

/// What a record can be found by again, in little room: texts are held as digests.
struct KnownRecord
{
    quint64 number = 0; ///< numberKey()
    quint64 person = 0; ///< personKey()
    Decimal net, sum;
    bool hasNet = false;
    bool hasSum = false;
    int lines = 0;
};

/// The key of a record's number among those of its family; `kind` counts for invoices and rolls.
quint64 numberKey(DocumentFamily family, QStringView kind, QStringView number);
/// The key of date and customer, however the date is spelled (5.3.2024 is 05.03.2024 0:00:00).
quint64 personKey(DocumentFamily family, QStringView kind, QStringView date, QStringView customer);

/// A document that was read.
struct KnownDocument
{
    KnownDocument(QString itsPath, qint64 itsSize, qint64 itsTime)
        : path(std::move(itsPath))
        , size(itsSize)
        , time(itsTime)
    {
    }

    QString path;
    qint64 size;
    qint64 time; ///< of its last change, in milliseconds since the epoch
    DocumentFamily family = DocumentFamily::Unknown;
    QString fault;          ///< why it counts for nothing; else empty
    bool isForeign = false; ///< no document of the program: not worth a word
    bool isHalf = false;    ///< ends in its midst: nobody has imported it
    std::vector<KnownRecord> records;
    qint64 cashNumber = 0; ///< the highest of its KN numbers
    qint64 bankNumber = 0; ///< the highest of its BT numbers

    /// Whether it may hold records all the same.
    bool isUnread() const { return !fault.isEmpty() && !isForeign && !isHalf; }
};

/// The documents read so far, kept in memory and read again once size or time has changed. All
/// screens share one. Fit for threads.
class DocumentCache
{
public:
    static std::shared_ptr<DocumentCache> shared();

    /// The documents of the folders, the newest first; nothing where it was stopped.
    std::vector<std::shared_ptr<const KnownDocument>> documents(const QStringList &folders,
                                                                const std::atomic_bool &stop);

private:
    std::shared_ptr<const KnownDocument> document(const QString &path, qint64 size, qint64 time,
                                                  const std::atomic_bool &stop);

    std::mutex m_reading; // one at a time, however many screens ask
    QHash<QString, std::shared_ptr<const KnownDocument>> m_known;
};

} // namespace kervan
