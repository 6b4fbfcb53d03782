#include "workbook/xls.h"

#include "base/failure.h"
#include "workbook/biffrecords.h"
#include "workbook/compoundfile.h"
#include "workbook/damage.h"
#include "workbook/sheetbuilder.h"
#include "workbook/sheetnames.h"
#include "workbook/xlscipher.h"

#include <QHash>

#include <algorithm>
#include <cmath>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr quint16 version8 = 0x0600;
constexpr quint16 worksheetPart = 0x0010;

// The stream of records: the file itself, or the one in its container.
QByteArray biffStream(const QByteArray &bytes)
{
    if (!bytes.startsWith(CompoundFile::mark))
        return bytes;
    const CompoundFile file(bytes);
    if (file.has(u"EncryptedPackage"_s))
        throw Failure(u"parola ile korunuyor; Excel'de açıp parolasını kaldırın"_s);
    if (file.has(u"Workbook"_s))
        return file.stream(u"Workbook"_s);
    if (file.has(u"Book"_s))
        return file.stream(u"Book"_s);
    throw Failure(u"Excel çalışma kitabı değil"_s);
}

class XlsReader
{
public:
    explicit XlsReader(const QByteArray &stream)
        : m_stream(stream)
    {
    }

    // They stand in front of the texts, which may be many.
    QStringList names()
    {
        checkStart(m_records.next());
        for (Record record = m_records.next();
             record.type != BiffRecords::EndOfPart && record.type != BiffRecords::SharedTexts;
             record = m_records.next()) {
            if (record.type == BiffRecords::SheetEntry)
                readGlobal(record);
        }
        return m_sheetNames;
    }

    std::shared_ptr<const Sheet> read(const QString &sheetName)
    {
        readGlobals();
        m_records.seek(m_sheetPlaces[findSheet(m_sheetNames, sheetName)]);
        readSheet();
        return m_builder.finish();
    }

private:
    using Record = BiffRecords::Record;

    void checkStart(const Record &start)
    {
        if ((start.type & 0xFFU) != (BiffRecords::StartOfPart & 0xFFU))
            throw Failure(u"Excel çalışma kitabı değil"_s);
        if (start.type != BiffRecords::StartOfPart || numberAt<quint16>(start.data, 0) != version8)
            throw Failure(u"Excel 95 ya da daha eski biçimde; Excel'de .xlsx olarak kaydedin"_s);
    }

    void readGlobals()
    {
        checkStart(m_records.next());
        for (Record record = m_records.next(); record.type != BiffRecords::EndOfPart;
             record = m_records.next())
            readGlobal(record);
        for (const quint16 format : std::as_const(m_cellFormats))
            m_builder.formats.append(cellFormat(format, m_formatCodes.value(format)));
    }

    void readGlobal(const Record &record)
    {
        BiffBytes bytes(m_records, record.data);
        switch (record.type) {
        case BiffRecords::StartsIn1904:
            m_builder.starts1904 = bytes.take<quint16>() != 0;
            break;
        case BiffRecords::NumberFormat:
            m_formatCodes.insert(numberAt<quint16>(record.data, 0), formatCode(record.data));
            break;
        case BiffRecords::CellFormatting:
            m_cellFormats.append(numberAt<quint16>(record.data, 2));
            break;
        case BiffRecords::SheetEntry: {
            const auto place = bytes.take<quint32>();
            const auto kind = bytes.take<quint16>() >> 8U; // above it, whether it is hidden
            if (kind == 0) {
                m_sheetPlaces.append(place);
                m_sheetNames.append(bytes.takeShortText());
            }
            break;
        }
        case BiffRecords::SharedTexts: {
            bytes.skip(4); // how often they are used
            const auto count = bytes.take<quint32>();
            for (quint32 i = 0; i < count; ++i)
                m_texts.append(m_builder.keep(bytes.takeText().toUtf8()));
            break;
        }
        default:
            break;
        }
    }

    // Of a code whose length is wrong, or told as older versions tell it, the letters that are
    // there: they still say whether it is of a date.
    QString formatCode(QByteArrayView data)
    {
        QString code;
        const auto failed = passOver([&] {
            BiffBytes bytes(m_records, data);
            bytes.skip(2);
            code = bytes.takeText();
        });
        if (failed) {
            code = QString::fromLatin1(data.sliced(std::min<qsizetype>(data.size(), 3)));
            code.removeIf([](QChar c) { return c < u' '; });
        }
        return code;
    }

    // Charts that stand on the sheet are parts within it.
    void readSheet()
    {
        const Record start = m_records.next();
        checkStart(start);
        if (numberAt<quint16>(start.data, 2) != worksheetPart)
            throw Failure(u"dosya bozuk (çalışma sayfası değil)"_s);
        for (int depth = 1; depth > 0;) {
            const Record record = m_records.next();
            if (record.type == BiffRecords::StartOfPart)
                ++depth;
            else if (record.type == BiffRecords::EndOfPart)
                --depth;
            else if (depth == 1)
                readCell(record);
        }
    }

    void readCell(const Record &record)
    {
        const QByteArrayView data = record.data;
        switch (record.type) {
        case BiffRecords::SharedText: {
            const auto index = numberAt<quint32>(data, 6);
            if (index >= m_texts.size())
                throw Failure(u"dosya bozuk (metin numarası)"_s);
            m_builder.add(place(data), m_texts[index]);
            break;
        }
        case BiffRecords::PlainText:
        case BiffRecords::RichText: {
            BiffBytes bytes(m_records, data);
            bytes.skip(6);
            addText(place(data), bytes.takeText());
            break;
        }
        case BiffRecords::PackedNumber:
            addNumber(place(data), biffPacked(data, 6), numberAt<quint16>(data, 4));
            break;
        case BiffRecords::ManyNumbers:
            addNumbers(data);
            break;
        case BiffRecords::Number:
            addNumber(place(data), biffDouble(data, 6), numberAt<quint16>(data, 4));
            break;
        case BiffRecords::TruthOrError:
            if (numberAt<quint16>(data, 6) < 0x100) // else an error
                m_builder.addTruth(place(data), (numberAt<quint16>(data, 6) & 0xFFU) != 0);
            break;
        case BiffRecords::Formula:
        case BiffRecords::Formula3:
        case BiffRecords::Formula4:
            addResult(data);
            break;
        case BiffRecords::FormulaText:
            addText(m_formulaPlace, BiffBytes(m_records, data).takeText());
            break;
        default:
            break;
        }
    }

    static SheetBuilder::Place place(QByteArrayView data)
    {
        return {.row = numberAt<quint16>(data, 0), .column = numberAt<quint16>(data, 2)};
    }

    void addText(SheetBuilder::Place at, const QString &text)
    {
        m_builder.add(at, m_builder.keep(text.toUtf8()));
    }

    void addNumber(SheetBuilder::Place at, double number, quint16 format)
    {
        if (std::isfinite(number))
            m_builder.add(at, number, format);
    }

    // Row, first column, then format and number for each cell, and the last column.
    void addNumbers(QByteArrayView data)
    {
        constexpr qsizetype bytesEach = 6;
        SheetBuilder::Place at = place(data);
        for (qsizetype i = 4; i + bytesEach + 2 <= data.size(); i += bytesEach, ++at.column)
            addNumber(at, biffPacked(data, i + 2), numberAt<quint16>(data, i));
    }

    // A result that is no number is marked by its upper bytes; a text follows in its own record.
    void addResult(QByteArrayView data)
    {
        constexpr quint16 noNumber = 0xFFFF;
        constexpr quint16 truth = 1;
        m_formulaPlace = place(data);
        if (numberAt<quint16>(data, 12) != noNumber)
            addNumber(m_formulaPlace, biffDouble(data, 6), numberAt<quint16>(data, 4));
        else if ((numberAt<quint16>(data, 6) & 0xFFU) == truth)
            m_builder.addTruth(m_formulaPlace, (numberAt<quint16>(data, 8) & 0xFFU) != 0);
    }

    QByteArray m_stream;
    BiffRecords m_records{m_stream};
    QStringList m_sheetNames;
    QList<quint32> m_sheetPlaces;
    QHash<quint16, QString> m_formatCodes;
    QList<quint16> m_cellFormats; ///< by number of formatting
    QList<SheetBuilder::Text> m_texts;
    SheetBuilder::Place m_formulaPlace{.row = 0, .column = 0};
    SheetBuilder m_builder;
};

} // namespace

std::shared_ptr<const Sheet> readXls(QByteArray bytes, const QString &sheetName)
{
    bytes = biffStream(bytes);
    decipherXls(bytes);
    return XlsReader(bytes).read(sheetName);
}

QStringList xlsSheetNames(QByteArray bytes)
{
    bytes = biffStream(bytes);
    decipherXls(bytes);
    return XlsReader(bytes).names();
}

} // namespace kervan
