// Parts of an .xlsx as XML: whatever the pieces in which they come, the tokens are the same; and
// where a full XML reader takes a part, they are those that it finds.

#include "workbook/xmlscanner.h"
#include "base/failure.h"
#include "support/harness.h"
#include "workbook/sheetbuilder.h"
#include "workbook/xlsxsheet.h"

#include <QXmlStreamReader>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

XmlScanner::Source inPieces(const QByteArray &bytes, qsizetype size)
{
    return [&bytes, size, at = qsizetype(0)](char *to, qsizetype most) mutable {
        const qsizetype given = std::min({size, most, bytes.size() - at});
        std::memcpy(to, bytes.constData() + at, static_cast<std::size_t>(given));
        at += given;
        return given;
    };
}

QString plainLineEnds(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

// A letter for each kind of token; neighbouring texts are one.
class Told
{
public:
    void start(const QString &name, const QStringList &attributes)
    {
        flush();
        m_tokens << u'<' + name;
        for (const QString &attribute : attributes)
            m_tokens << u'@' + attribute.simplified();
    }
    void end()
    {
        flush();
        m_tokens << u">"_s;
    }
    void text(const QString &text) { m_text += text; }
    void fail(const QString &why)
    {
        flush();
        m_tokens << u'!' + why;
    }
    QString all()
    {
        flush();
        return m_tokens.join(u'\n');
    }

private:
    void flush()
    {
        if (!m_text.isEmpty())
            m_tokens << u'"' + plainLineEnds(m_text);
        m_text.clear();
    }

    QStringList m_tokens;
    QString m_text;
};

struct Scanned
{
    QString tokens;
    bool failed = false;
};

Scanned scan(const QByteArray &bytes, qsizetype pieces)
{
    Told told;
    Scanned result;
    const auto failed = passOver([&] {
        XmlScanner xml(inPieces(bytes, pieces));
        for (auto token = xml.next(); token != XmlScanner::Token::Finished; token = xml.next()) {
            if (token == XmlScanner::Token::Text) {
                told.text(QString::fromUtf8(xml.text()));
            } else if (token == XmlScanner::Token::End) {
                told.end();
            } else {
                QStringList attributes;
                const QString name = QString::fromUtf8(xml.name());
                const auto broken = passOver([&] {
                    QList<QByteArray> names;
                    while (const auto attribute = xml.nextAttribute())
                        names << attribute->name.toByteArray();
                    for (const QByteArray &each : std::as_const(names))
                        attributes << QString::fromUtf8(each);
                });
                told.start(name, attributes);
                if (broken)
                    told.fail(broken->description());
            }
        }
    });
    if (failed)
        told.fail(failed->description());
    return {told.all(), failed.has_value()};
}

QString local(QStringView name)
{
    return name.sliced(name.lastIndexOf(u':') + 1).toString();
}

// What a full reader finds; nothing where it refuses the part, or would take more than ours may.
std::optional<QString> fullyRead(const QByteArray &bytes)
{
    Told told;
    QXmlStreamReader xml(bytes);
    xml.setNamespaceProcessing(false);
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            QStringList attributes;
            for (const auto &attribute : xml.attributes())
                attributes << local(attribute.qualifiedName());
            told.start(local(xml.qualifiedName()), attributes);
            break;
        }
        case QXmlStreamReader::EndElement:
            told.end();
            break;
        case QXmlStreamReader::Characters:
            told.text(xml.text().toString());
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            return std::nullopt;
        default:
            break;
        }
    }
    if (xml.hasError())
        return std::nullopt;
    return told.all();
}

bool isUtf8(const QByteArray &bytes)
{
    return !bytes.toLower().contains("encoding") && !bytes.startsWith("\xFF\xFE") &&
           !bytes.startsWith("\xFE\xFF") && !bytes.contains('\0');
}

// The cells that a worksheet gives, however it comes.
QString cellsOf(const QByteArray &strings, const QByteArray &sheet, qsizetype pieces)
{
    QStringList cells;
    const auto failed = passOver([&] {
        SheetBuilder builder;
        builder.formats = {{}, {.isDate = true, .zeros = 0}, {.isDate = false, .zeros = 5}};
        XmlScanner texts(inPieces(strings, pieces));
        const auto shared = readSharedStrings(texts, builder);
        XmlScanner xml(inPieces(sheet, pieces));
        readWorksheet(xml, shared, builder);
        const auto read = builder.finish();
        for (int row = 0; row < std::min(read->rows(), 50); ++row) {
            for (int field = 0; field < std::min(read->columns(), 50); ++field)
                cells << read->text(row, field);
        }
    });
    if (failed)
        cells << failed->description();
    return cells.join(u'|');
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const int size = 1 + pieces.choice(64);
    const QByteArray sheet = pieces.bytes();
    const QByteArray strings = pieces.bytes();
    constexpr qsizetype whole = 1 << 20;
    const Scanned scanned = scan(sheet, whole);
    expectSame(scan(sheet, size).tokens, scanned.tokens, "other tokens in small pieces");
    if (isUtf8(sheet)) {
        if (const auto full = fullyRead(sheet))
            expectSame(scanned.tokens, *full, "a full XML reader finds other tokens");
    }
    expectSame(cellsOf(strings, sheet, size), cellsOf(strings, sheet, whole),
               "other cells in small pieces");
}
