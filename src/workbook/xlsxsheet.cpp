#include "workbook/xlsxsheet.h"

#include "base/failure.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

using Token = XmlScanner::Token;

[[noreturn]] void failDamaged(const QString &what)
{
    throw Failure(u"dosya bozuk (%1)"_s.arg(what));
}

template<class Number>
std::optional<Number> toNumber(QByteArrayView text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.begin(), text.end(), number);
    if (error != std::errc() || end != text.end())
        return std::nullopt;
    return number;
}

// "_x000D_" stands for the character of that number.
void resolveEscapes(QByteArray &text)
{
    constexpr qsizetype length = 7;
    if (!text.contains("_x"))
        return;
    const QString escaped = QString::fromUtf8(text);
    QString plain;
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        bool isNumber = false;
        if (escaped[i] == u'_' && i + length <= escaped.size() && escaped[i + 1] == u'x' &&
            escaped[i + length - 1] == u'_') {
            const ushort unit = QStringView(escaped).sliced(i + 2, 4).toUShort(&isNumber, 16);
            if (isNumber)
                plain += QChar(unit);
        }
        if (isNumber)
            i += length - 1;
        else
            plain += escaped[i];
    }
    text = plain.toUtf8();
}

// What all runs of a text come to. Programs that show such a text leave out the blanks around it
// unless a run says that its blanks count; those between two runs part words.
class RunText
{
public:
    explicit RunText(QByteArray &text)
        : m_text(text)
    {
        m_text.clear();
    }

    void append(QByteArrayView run, bool keepsBlanks)
    {
        if (m_text.isEmpty() && !keepsBlanks) {
            while (!run.isEmpty() && isBlank(run.front()))
                run = run.sliced(1);
        }
        m_text += run;
        if (keepsBlanks)
            m_kept = m_text.size();
    }

    void finish()
    {
        while (m_text.size() > m_kept && isBlank(m_text.back()))
            m_text.chop(1);
    }

private:
    static bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

    QByteArray &m_text;
    qsizetype m_kept = 0; // so many bytes stay, whatever they are
};

// The text of a "t" element that has just started.
void appendRun(XmlScanner &xml, RunText &text)
{
    const bool keepsBlanks = xml.attribute("space") == "preserve";
    const int outside = xml.depth() - 1;
    QByteArray run;
    for (Token token = xml.next(); token != Token::End || xml.depth() > outside;
         token = xml.next()) {
        if (token == Token::Text)
            run += xml.text();
    }
    text.append(run, keepsBlanks);
}

// The text of an element of runs that has just started, without the reading aids of its signs.
void readRuns(XmlScanner &xml, QByteArray &text)
{
    RunText runs(text);
    const int outside = xml.depth() - 1;
    int aid = 0;
    for (Token token = xml.next(); token != Token::End || xml.depth() > outside;
         token = xml.next()) {
        if (token == Token::Start && xml.isNamed("rPh")) {
            aid = xml.depth();
        } else if (token == Token::End && aid > xml.depth()) {
            aid = 0;
        } else if (token == Token::Start && aid == 0 && xml.isNamed("t")) {
            appendRun(xml, runs);
        }
    }
    runs.finish();
    resolveEscapes(text);
}

enum class CellType : quint8 { Number, SharedText, FormulaText, InlineText, Truth, Date, Error };

CellType cellType(QByteArrayView word)
{
    if (word == "s")
        return CellType::SharedText;
    if (word == "str")
        return CellType::FormulaText;
    if (word == "inlineStr")
        return CellType::InlineText;
    if (word == "b")
        return CellType::Truth;
    if (word == "d")
        return CellType::Date;
    return word == "e" ? CellType::Error : CellType::Number;
}

class WorksheetReader
{
public:
    WorksheetReader(XmlScanner &xml, const QList<SheetBuilder::Text> &sharedStrings,
                    SheetBuilder &builder)
        : m_xml(xml)
        , m_sharedStrings(sharedStrings)
        , m_builder(builder)
    {
    }

    void read()
    {
        if (m_xml.next() != Token::Start || !m_xml.isNamed("worksheet"))
            failDamaged(u"çalışma sayfası değil"_s);
        bool inData = false;
        for (Token token = m_xml.next(); token != Token::Finished; token = m_xml.next()) {
            if (token == Token::Text)
                continue;
            if (m_xml.isNamed("sheetData"))
                inData = token == Token::Start;
            else if (inData && token == Token::Start)
                startElement();
        }
    }

private:
    void startElement()
    {
        if (m_xml.isNamed("c")) {
            readCell();
        } else if (m_xml.isNamed("row")) {
            ++m_place.row;
            m_place.column = -1;
            while (const auto attribute = m_xml.nextAttribute()) {
                if (attribute->isNamed("r"))
                    m_place.row = toNumber<qint64>(attribute->raw).value_or(0) - 1;
            }
        }
    }

    // The attributes of a cell: its place behind the last one unless it tells it.
    void readAttributes()
    {
        m_type = CellType::Number;
        m_format = 0;
        ++m_place.column;
        while (const auto attribute = m_xml.nextAttribute()) {
            if (attribute->isNamed("r"))
                readPlace(attribute->raw);
            else if (attribute->isNamed("s"))
                m_format = toNumber<qsizetype>(attribute->raw).value_or(-1);
            else if (attribute->isNamed("t"))
                m_type = cellType(attribute->raw);
        }
    }

    void readPlace(QByteArrayView reference)
    {
        qint64 column = 0;
        qsizetype i = 0;
        for (; i < reference.size() && i < 4; ++i) {
            const char letter = static_cast<char>(reference[i] & ~0x20);
            if (letter < 'A' || letter > 'Z')
                break;
            column = column * 26 + (letter - 'A' + 1);
        }
        qint64 row = 0;
        for (; i < reference.size() && reference[i] >= '0' && reference[i] <= '9'; ++i)
            row = std::min(row * 10 + (reference[i] - '0'), SheetBuilder::mostRows + 1);
        if (column == 0 || row == 0 || i != reference.size())
            failDamaged(u"hücre yeri"_s);
        m_place = {.row = row - 1, .column = column - 1};
    }

    void readCell()
    {
        readAttributes();
        const int outside = m_xml.depth() - 1;
        bool inValue = false;
        m_value.resize(0);
        for (Token token = m_xml.next(); token != Token::End || m_xml.depth() > outside;
             token = m_xml.next()) {
            if (token == Token::Text) {
                if (inValue)
                    m_value += m_xml.text();
            } else if (token == Token::End) {
                inValue = false;
            } else if (m_xml.isNamed("is")) {
                readRuns(m_xml, m_value);
            } else {
                inValue = m_xml.isNamed("v");
            }
        }
        if (!m_value.isEmpty())
            addCell();
    }

    void addCell()
    {
        const QByteArrayView value = QByteArrayView(m_value).trimmed();
        switch (m_type) {
        case CellType::Number:
            addNumber(toNumber<double>(value));
            break;
        case CellType::SharedText:
            addShared(toNumber<qsizetype>(value));
            break;
        case CellType::FormulaText:
            resolveEscapes(m_value);
            addText();
            break;
        case CellType::InlineText:
            addText();
            break;
        case CellType::Truth:
            m_builder.addTruth(m_place, value != "0" && value != "false");
            break;
        case CellType::Date:
            addIsoDate();
            break;
        case CellType::Error:
            break;
        }
    }

    void addShared(std::optional<qsizetype> index)
    {
        if (!index || *index < 0 || *index >= m_sharedStrings.size())
            failDamaged(u"metin numarası"_s);
        m_builder.add(m_place, m_sharedStrings[*index]);
    }

    void addText() { m_builder.add(m_place, m_builder.keep(m_value)); }

    // What is no number stays what it says.
    void addNumber(std::optional<double> number)
    {
        if (number && std::isfinite(*number))
            m_builder.add(m_place, *number, m_format);
        else
            addText();
    }

    void addIsoDate()
    {
        const double serial = isoSerial(QString::fromUtf8(m_value));
        if (isDay(serial))
            m_builder.addDate(m_place, serial);
        else
            addText();
    }

    XmlScanner &m_xml;
    const QList<SheetBuilder::Text> &m_sharedStrings;
    SheetBuilder &m_builder;
    SheetBuilder::Place m_place{.row = -1, .column = -1};
    qsizetype m_format = 0;
    CellType m_type = CellType::Number;
    QByteArray m_value;
};

} // namespace

QList<SheetBuilder::Text> readSharedStrings(XmlScanner &xml, SheetBuilder &builder)
{
    QList<SheetBuilder::Text> texts;
    QByteArray text;
    for (Token token = xml.next(); token != Token::Finished; token = xml.next()) {
        if (token == Token::Start && xml.isNamed("si")) {
            readRuns(xml, text);
            texts.append(builder.keep(text));
        }
    }
    return texts;
}

void readWorksheet(XmlScanner &xml, const QList<SheetBuilder::Text> &sharedStrings,
                   SheetBuilder &builder)
{
    WorksheetReader(xml, sharedStrings, builder).read();
}

} // namespace kervan
