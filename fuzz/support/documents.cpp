#include "support/documents.h"

#include "base/codepage.h"
#include "check/documentreader.h"
#include "check/documentshape.h"
#include "support/harness.h"

#include <QXmlStreamReader>

namespace kervan::fuzz {

using namespace Qt::StringLiterals;

namespace {

bool isRecord(QStringView name)
{
    return std::ranges::any_of(
        shape::records, [&](const auto &record) { return name == QLatin1String(record.first); });
}

// Ours keeps a number as it was written, so that it is found again in a list.
QString withXmlLineEnds(const QString &text)
{
    return QString(text).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

QString numberName(const QString &record)
{
    return record == u"AR_AP" || record == u"ITEM" ? u"CODE"_s : u"NUMBER"_s;
}

} // namespace

QString asSpelled(const QString &value)
{
    QString text = asWritten(value);
    text.removeIf(
        [](QChar c) { return c.category() == QChar::Other_Control && c != u'\t' && c != u'\n'; });
    return text;
}

void readBoth(QByteArrayView bytes, ReadDocument &found)
{
    QStringList byXml;
    QXmlStreamReader xml(fromCodePage(bytes));
    QStringList open;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.isStartElement()) {
            const QString name = xml.name().toString();
            open << name;
            if (open.size() == 2 && isRecord(name))
                byXml << QString();
            else if (open.size() == 3 && isRecord(open[1]) && name == numberName(open[1])) {
                byXml.last() = xml.readElementText(QXmlStreamReader::IncludeChildElements);
                open.removeLast();
            }
        } else if (xml.isEndElement() && !open.isEmpty()) {
            open.removeLast();
        }
    }
    expect(!xml.hasError(), "an XML reader refuses the document", xml.errorString(),
           fromCodePage(bytes).section(u'\n', int(xml.lineNumber()) - 2, int(xml.lineNumber())));
    expect(found.numbers.size() == byXml.size(), "the readers find another count of records",
           found.numbers.join(u'|'), byXml.join(u'|'));
    for (qsizetype i = 0; i < byXml.size(); ++i)
        expectSame(withXmlLineEnds(found.numbers[i]).trimmed(), byXml[i].trimmed(),
                   "the readers find another number");
}

ReadDocument readBack(const QString &path, Values spelling)
{
    ReadDocument found;
    const DocumentReading reading = readDocument(path, [&](const DocumentRecord &record) {
        found.numbers << fromCodePage(record[DocumentRecord::Number]);
        found.lines << record.lines;
    });
    found.records = reading.records;
    expect(reading.records == found.numbers.size(), "records counted and handed over part");
    if (spelling == Values::AsTheyStand)
        return found;
    expect(reading.isFine(), "a document as XML is not whole", reading.fault);
    expect(reading.problemCount == 0, "a document as XML has a place to stumble over",
           reading.problems.isEmpty() ? QString() : reading.problems.first().value);
    readBoth(contents(path), found);
    return found;
}

} // namespace kervan::fuzz
