#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace kervan {

/// The records of a BIFF8 stream, one behind the other.
class BiffRecords
{
public:
    enum Type : quint16 {
        Formula = 0x0006,
        EndOfPart = 0x000A,
        StartsIn1904 = 0x0022,
        Password = 0x002F,
        Continue = 0x003C,
        SheetEntry = 0x0085,
        ManyNumbers = 0x00BD,
        RichText = 0x00D6,
        CellFormatting = 0x00E0,
        SharedTexts = 0x00FC,
        SharedText = 0x00FD,
        Number = 0x0203,
        PlainText = 0x0204,
        TruthOrError = 0x0205,
        FormulaText = 0x0207,
        PackedNumber = 0x027E,
        Formula3 = 0x0206, ///< of an older version, which some programs still write
        Formula4 = 0x0406,
        NumberFormat = 0x041E,
        StartOfPart = 0x0809,
    };
    struct Record
    {
        quint16 type;
        QByteArrayView data;
    };

    explicit BiffRecords(QByteArrayView stream)
        : m_stream(stream)
    {
    }
    /// Makes the record at that place of the stream the next one.
    void seek(qsizetype at) { m_at = at; }
    /// The next record; the stream's end is a Failure, since every part ends with a record.
    Record next();
    /// The data of the next record if it continues the last one; nothing otherwise.
    std::optional<QByteArrayView> nextContinuation();

private:
    QByteArrayView m_stream;
    qsizetype m_at = 0;
};

/// The bytes of a record and of those that continue it, read from start to end. Reading beyond
/// them is a Failure.
class BiffBytes
{
public:
    BiffBytes(BiffRecords &records, QByteArrayView data)
        : m_records(records)
        , m_data(data)
    {
    }
    template<class Number>
    Number take()
    {
        Number number = 0;
        for (std::size_t i = 0; i < sizeof(Number); ++i)
            number = static_cast<Number>(number | Number(takeByte()) << (8 * i));
        return number;
    }
    void skip(qint64 count);
    /// A text with its length in front, two bytes long or one.
    QString takeText();
    QString takeShortText();

private:
    quint8 takeByte();
    void goOn();
    void takeCharacters(QString &text, qsizetype count, bool areWide);

    BiffRecords &m_records;
    QByteArrayView m_data;
};

/// A double from the place in a record; a record that is too short is a Failure.
double biffDouble(QByteArrayView data, qsizetype at);
/// A number packed into four bytes.
double biffPacked(QByteArrayView data, qsizetype at);

} // namespace kervan
