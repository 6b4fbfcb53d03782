// Documents: any bytes are read alike from memory and from a file in pieces, and what is written
// from pieces is what was handed over.

#include "support/documents.h"
#include "base/codepage.h"
#include "base/failure.h"
#include "check/documentreader.h"
#include "check/documenttable.h"
#include "check/xmltext.h"
#include "logoxml/document.h"
#include "support/harness.h"

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

QString told(const DocumentReading &reading, const QStringList &records)
{
    QStringList lines{QString::number(int(reading.family)),  fromCodePage(reading.root),
                      QString::number(reading.records),      reading.whole ? u"whole"_s : u"cut"_s,
                      QString::number(reading.problemCount), reading.fault};
    for (const DocumentProblem &problem : reading.problems)
        lines << QString::number(problem.line) + problem.what + problem.value;
    return (lines + records).join(u'\n');
}

QString told(const DocumentRecord &record)
{
    QString text = QString::number(record.line) + u' ' + QString::number(record.present) + u' ' +
                   QString::number(record.lines) + u' ' + QString::number(record.linesLacking);
    for (const QByteArray &field : record.fields)
        text += u'|' + fromCodePage(field);
    for (const auto &amount : {record.net, record.sum})
        text += u'|' + (amount ? amount->text() : u"none"_s);
    return text;
}

void readTwice(fuzz::Pieces &pieces)
{
    constexpr qsizetype megabyte = 1048576;
    const QByteArray bytes = fuzz::shifted(pieces, megabyte);
    QStringList inMemory;
    const DocumentReading whole =
        readDocumentBytes(bytes, [&](const DocumentRecord &record) { inMemory << told(record); });
    const QString path = fuzz::pathOf(u"belge.xml"_s);
    fuzz::store(path, bytes);
    QStringList inPieces;
    const DocumentReading pieced =
        readDocument(path, [&](const DocumentRecord &record) { inPieces << told(record); });
    fuzz::expectSame(told(pieced, inPieces), told(whole, inMemory), "read otherwise in pieces");
    fuzz::expect(whole.records == inMemory.size(), "records counted and handed over part");
    fuzz::expect(whole.problemCount >= whole.problems.size(), "more problems than are counted");
    if (bytes.size() < megabyte / 2)
        documentTable(path).summary();
}

void writeInPieces(fuzz::Pieces &pieces)
{
    Belge belge{.header = pieces.bytes(),
                .body = {},
                .separator = pieces.bytes(),
                .footer = pieces.bytes(),
                .spelling = pieces.choice(2) == 0 ? Values::AsTheyStand : Values::AsXml};
    const DocumentEnd end = pieces.choice(2) == 0 ? DocumentEnd::LineEnd : DocumentEnd::AsItStands;
    belge.body = pieces.rest();
    QByteArray plain = belge.header;
    for (qsizetype i = 0; i < belge.body.size(); ++i)
        plain += (i > 0 ? belge.separator : QByteArray()) + belge.body[i];
    plain += belge.footer;
    if (belge.spelling == Values::AsXml)
        plain.replace('\1', "&amp;").replace('\2', "&lt;").replace('\3', "&gt;").replace("\4", "");
    plain += end == DocumentEnd::LineEnd ? "\r\n" : "";
    const QString path = fuzz::pathOf(u"yazilan.xml"_s);
    belgeyaz(belge, end, path);
    fuzz::expectSame(fuzz::contents(path), plain, "another document is written");
    Belge frame = belge;
    frame.body.clear();
    belgeyaz(frame, end, path, [&](const TakePiece &take) {
        for (qsizetype i = 0; i < belge.body.size(); ++i) {
            if (i > 0)
                take(belge.separator);
            take(belge.body[i]);
        }
    });
    fuzz::expectSame(fuzz::contents(path), plain, "another document is written in pieces");
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    if (pieces.choice(2) == 0)
        readTwice(pieces);
    else
        writeInPieces(pieces);
}
