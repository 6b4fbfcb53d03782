#pragma once

#include "base/grid.h"
#include "check/beside.h"
#include "check/documentcache.h"

#include <QDateTime>
#include <QStringList>
#include <QTimer>

#include <span>

namespace kervan {

/// The rows of a list that are looked for in documents, by the columns of their grid; -1 is a
/// column that the list has not.
struct ListedRows
{
    /// What records are told by: invoices, cards and counts by their number, slips, which get new
    /// numbers at each read, by date, customer and amount.
    enum By { ByNumber, ByContent };
    /// Which amount of an invoice's document is that of the list: of the SAP list the sum with VAT
    /// and extra tax, of the Düzey list the net. Of slips the sum.
    enum Amount { Sum, Net };

    const Grid *grid = nullptr;
    DocumentFamily family = DocumentFamily::Unknown;
    By by = ByNumber;
    QString kind = {}; ///< TYPE of invoices (invoiceKind()) and rolls; empty of others
    int number = -1;   ///< of cards the code
    int date = -1;
    int customer = -1;
    int amount = -1;
    Amount amountIs = Sum;
};

/// The TYPE that invoices of a choice as "10 (Satış Faturaları)" get in a document.
QString invoiceKind(QStringView faturaTuru);

/// Whether a row stands in a document of the folders.
struct WrittenMark
{
    enum Kind {
        None,    ///< nothing is known
        Same,    ///< "aynı": grey tick
        Differs, ///< "aynı numara, tutar farklı": amber
        Similar, ///< "benzeri yazılmış": a slip of the same date, customer and amount
    };

    Kind kind = None;
    QString file;     ///< full path of the document
    QDateTime time;   ///< of its last change
    QString sentence; ///< for the tooltip and for readers; says "bu klasörde"
};

/// A sentence for each of these counters whose next number stands in a document already.
QStringList counterWarnings(const std::vector<std::shared_ptr<const KnownDocument>> &documents,
                            const QString &programFolder, const QStringList &counters);

/// Finds the rows of lists in the documents of the target folder and of one more, which are read
/// beside the work and kept in memory. Nothing is stored, nothing waits for it. `list` counts the
/// lists of a screen, of which most have one.
class WrittenDocuments : public QObject
{
    Q_OBJECT

public:
    explicit WrittenDocuments(QObject *parent = nullptr);

    /// The folders, whose documents are then read; the same ones again change nothing. From the
    /// targets, which the program writes into, the rests of killed writers are swept.
    void setFolders(const QStringList &folders, const QStringList &targets = {});
    const QStringList &folders() const { return m_folders; }
    /// The list has changed: its rows are copied here and marked by what is known. The grid is not
    /// looked at again.
    void setRows(const ListedRows &rows, qsizetype list = 0);
    /// Reads what has changed in the folders, a moment later: after a write, or when the window is
    /// looked at again. What is known stands until then.
    void refresh();

    /// Whether its folders were read since they were set.
    bool isRead() const { return m_found.isRead; }
    bool isReading() const { return m_reader.isRunning() || m_soon.isActive(); }
    /// A mark for each row of the list.
    QList<WrittenMark> marks(qsizetype list = 0) const
    {
        return list < m_lists.size() ? m_lists[list].marks : QList<WrittenMark>();
    }
    /// How many rows have one.
    int markedCount(qsizetype list = 0) const;
    /// The document with a record of this number, as of a count.
    WrittenMark numbered(DocumentFamily family, const QString &kind, const QString &number) const;
    /// How many documents are known, and a sentence for each that could not be read.
    qsizetype documentCount() const { return qsizetype(m_found.documents.size()); }
    QStringList skipped() const;
    /// Those of the sentences whose documents may hold records all the same.
    QStringList unread() const;
    /// What a document of the folders holds, as notes count it: "120 fatura"; empty where it is not
    /// known.
    QString contentOf(const QString &path) const;
    /// What the documents tell of counters, as below.
    QStringList counterWarnings(const QString &programFolder, const QStringList &counters) const
    {
        return kervan::counterWarnings(m_found.documents, programFolder, counters);
    }

Q_SIGNALS:
    /// The marks, or what is known of the folders, are others.
    void changed();

private:
    // A record by a key: sorted by it, the newest document first.
    struct Place
    {
        quint64 key;
        quint32 document;
        quint32 record;
    };
    struct Name
    {
        QString path;
        QDateTime time;
        QString told; // both for the eye
    };
    struct Found
    {
        std::vector<std::shared_ptr<const KnownDocument>> documents;
        std::vector<Name> names; // of the documents
        std::vector<Place> byNumber, byContent;
        bool isRead = false;
    };
    struct Row
    {
        quint64 number;
        quint64 person;
        std::optional<Decimal> amount;
        bool isNumbered;
    };

    struct List
    {
        ListedRows rows; // without the grid
        QList<Row> values;
        QList<WrittenMark> marks;
    };

    /// A sentence for each document that is so.
    template<class Is>
    QStringList sentencesOf(Is is) const;
    static Found look(DocumentCache &cache, const QStringList &folders,
                      const std::atomic_bool &stop);
    void read();
    void markRows();
    void mark(List &list) const;
    WrittenMark markByNumber(const List &list, const Row &row) const;
    static std::span<const Place> placesOf(const std::vector<Place> &places, quint64 key);
    void markByContent(List &list) const;
    WrittenMark markOf(WrittenMark::Kind kind, const Place &place, const QString &what) const;
    const KnownRecord &recordAt(const Place &place) const;

    std::shared_ptr<DocumentCache> m_cache = DocumentCache::shared();
    Beside m_reader;
    QTimer m_soon;
    QStringList m_folders, m_targets;
    Found m_found;
    QList<List> m_lists;
};

} // namespace kervan
