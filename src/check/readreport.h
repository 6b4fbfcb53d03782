#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

namespace kervan {

/// Why lines or cells of a source gave no row: filled while the source is read, which costs nothing
/// for the lines that give one. Bounded: of the entries behind the first thousands only the reasons
/// are counted.
class ReadReport : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostEntries = 5000;
    static constexpr int mostReasons = 200;  // that are counted each by itself
    static constexpr int recordLength = 200; // letters of a record that are kept

    struct Entry
    {
        qint64 line = 0; ///< of a text, or record of a sheet, from 1 on
        QString cell;    ///< of a sheet: "Sayfa1!B7"; else empty
        QString record;  ///< its beginning
        QString reason;
    };

    /// A read begins; what the one before told is gone.
    void begin(const QString &source);
    void add(qint64 line, QStringView record, const QString &reason, const QString &cell = {});
    /// Whether the next entry is kept; if not, neither its record nor its cell need be spelled.
    bool hasRoom() const { return m_entries.size() < mostEntries; }
    /// The source has more, which the read could not take; behind the last add().
    void cutShort() { m_isCutShort = true; }
    bool isCutShort() const { return m_isCutShort; }
    /// The read is through.
    void end() { Q_EMIT changed(); }

    const QString &source() const { return m_source; }
    const QList<Entry> &entries() const { return m_entries; }
    /// How many there were, those that are not kept too.
    int total() const { return m_total; }
    /// Reasons in the order in which they came, with their numbers. Behind very many different ones
    /// the rest are counted together.
    QList<std::pair<QString, int>> reasons() const;

Q_SIGNALS:
    void changed();

private:
    void count(const QString &reason);

    QString m_source;
    QList<Entry> m_entries;
    QList<std::pair<QString, int>> m_reasons;
    QHash<QString, qsizetype> m_reasonPlaces; // in m_reasons
    int m_total = 0;
    bool m_isCutShort = false;
};

} // namespace kervan
