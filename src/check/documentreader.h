#pragma once

#include "check/decimal.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <array>
#include <atomic>
#include <functional>
#include <optional>

namespace kervan {

/// The families of documents, by the element that holds a record.
enum class DocumentFamily {
    Unknown,
    Invoices,  ///< INVOICE, of both sources of invoices
    CashSlips, ///< SD_TRANSACTION
    Rolls,     ///< CHQPN_ROLL: cheques (kind 1) and notes (kind 2)
    BankSlips, ///< BANK_VOUCHER
    CardSlips, ///< ARP_VOUCHER
    Accounts,  ///< AR_AP
    Items,     ///< ITEM
    Counts,    ///< SLIP
};

/// A record as it stands in a document; texts in Windows-1254, entities resolved. They hold while
/// the record is handed over.
struct DocumentRecord
{
    enum Field {
        Number, ///< of a card its code
        Kind,   ///< as Logo numbers it
        Date,
        Customer, ///< of a bank slip the person's code
        Title,
        Account, ///< GL, cash or bank account
        Plan,    ///< of rolls the due date, of items the unit set
        Fields
    };

    const QByteArray &operator[](Field which) const { return fields[which]; }
    /// Whether the record has such an element, be it empty.
    bool has(Field which) const { return (present >> which & 1U) != 0; }

    DocumentFamily family = DocumentFamily::Unknown;
    std::array<QByteArray, Fields> fields;
    unsigned present = 0;
    qint64 line = 0;      ///< of the file, from 1
    int lines = 0;        ///< goods lines of an invoice, lines of a count
    int linesLacking = 0; ///< of them, those without a code, a unit, a quantity or a price
    /// Of invoices the prices by the quantities; nothing where one of them can't be read. The
    /// totals of their heads are all "0", since Logo reckons them.
    std::optional<Decimal> net;
    /// Of invoices the net with the VAT and the extra tax that the lines tell, in front of all
    /// discounts; of slips the amount; of counts the quantities.
    std::optional<Decimal> sum;
};

/// Whether an amount of a list is that of a document. Invoices tell it by prices of seven digits,
/// so a kuruş, half of one a line and two millionths make no difference there.
bool isSameAmount(DocumentFamily family, Decimal listed, Decimal written, qint64 lines = 1);

/// A place that an XML reader stumbles over.
struct DocumentProblem
{
    qint64 line = 0;
    QString what;
    QString value; ///< that made it, cut where it is long
};

/// The fault of a document without a line.
constexpr QStringView emptyDocument = u"Dosya boş.";

/// What a document was found to be.
struct DocumentReading
{
    DocumentFamily family = DocumentFamily::Unknown;
    QByteArray root;
    qint64 bytes = 0;
    qint64 records = 0;
    bool whole = false; ///< the end of the root came, and nothing behind it
    /// The first of them; `problemCount` counts all.
    QList<DocumentProblem> problems;
    qint64 problemCount = 0;
    /// Why the file could not be read, or is none of the program's documents.
    QString fault;

    bool isFine() const { return fault.isEmpty() && whole; }
};

/// Takes the records of a document in their order.
using TakeRecord = std::function<void(const DocumentRecord &record)>;

/// Reads a document piece by piece, also one that an XML reader refuses: an element of the program
/// stands on a line of its own, so that a "&" or a "<" in its value does not hide its end. Never
/// throws. Fit for a thread of its own; `stop` ends it early with a fault.
DocumentReading readDocument(const QString &path, const TakeRecord &take,
                             const std::atomic_bool *stop = nullptr);

/// The same of bytes in memory.
DocumentReading readDocumentBytes(QByteArrayView bytes, const TakeRecord &take);

} // namespace kervan
