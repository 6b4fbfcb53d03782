// Templates filled quickly against the plain way, and bodies that accumulate against one text that
// is filled again and again.

#include "base/codepage.h"
#include "base/failure.h"
#include "logoxml/accumulated.h"
#include "support/harness.h"

#include <QXmlStreamReader>

using namespace kervan;
using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostBytes = 200000; // the plain way has no bound of its own

struct Case
{
    QByteArray text;
    QList<QByteArray> placeholders;
    QList<QStringList> records;
    Values spelling;
};

// No template and no placeholder of the program holds one.
QByteArray withoutControls(QByteArray text)
{
    return text.removeIf([](char c) { return static_cast<unsigned char>(c) < ' '; });
}

// A template, so many placeholders, and values for as many records as there are.
Case caseOf(fuzz::Pieces &pieces)
{
    Case given;
    given.spelling = pieces.choice(2) == 0 ? Values::AsTheyStand : Values::AsXml;
    const int count = 1 + pieces.choice(6);
    given.text = withoutControls(toCodePage(pieces.text()));
    for (int i = 0; i < count; ++i) {
        const QByteArray word = withoutControls(toCodePage(pieces.text()));
        if (!word.isEmpty())
            given.placeholders << word;
    }
    while (!pieces.atEnd() && given.records.size() < 12) {
        QStringList &values = given.records.emplaceBack();
        for (const QByteArray &word : std::as_const(given.placeholders)) {
            values << pieces.text();
            if (word.startsWith('<')) // elements come from the program itself
                values.last().removeIf([](QChar c) { return c < u' '; });
        }
    }
    return given;
}

bool swells(const QByteArray &text)
{
    return text.size() > mostBytes;
}

// Whether the plain way stays small: each step may put a value into every place of the one before.
bool fillPlainly(QByteArray &text, const QList<Fill> &fills)
{
    for (const Fill &fill : fills) {
        if (!fill.find.isEmpty() &&
            swells(text + QByteArray(text.count(fill.find) * fill.value.size() / 4, ' ')))
            return false;
        text.replace(fill.find, fill.value);
        if (swells(text))
            return false;
    }
    return true;
}

void fillQuickly(const Case &given)
{
    const Sablon sablon(given.text, given.placeholders, given.spelling);
    for (const QStringList &values : given.records) {
        QByteArray plain = given.text;
        const QList<Fill> fills = fillsOf(given.placeholders, values, given.spelling);
        if (!fillPlainly(plain, fills))
            return;
        fuzz::expectSame(sablondoldur(given.text, fills), plain,
                         "the filling is not the plain one");
        QByteArray quick;
        sablon.doldur(values, quick);
        fuzz::expectSame(quick, plain, "the prepared template fills otherwise");
    }
}

void accumulate(const Case &given)
{
    for (const bool handsOver : {false, true}) {
        AccumulatedBody body(given.text, given.placeholders, given.spelling);
        QByteArray handed;
        const TakePiece hand = [&](QByteArrayView piece) {
            handed += piece;
        };
        QByteArray plain;
        for (const QStringList &values : given.records) {
            plain += "\r\n" + given.text;
            if (!fillPlainly(plain, fillsOf(given.placeholders, values, given.spelling)))
                return;
            body.add(values);
            if (handsOver)
                body.handOver(hand);
            QByteArray sofar = handed;
            for (const QByteArray &record : body.records())
                sofar += record;
            fuzz::expectSame(sofar, plain, "the accumulated body differs");
        }
        body.handOverAll(hand);
        fuzz::expectSame(handed, plain, "the body handed over differs");
    }
}
// As XML no value can break the element that it stands in.
void spellAsXml(const Case &given)
{
    for (const QStringList &values : given.records) {
        for (const QString &value : values) {
            const QByteArray spelled = spellMarks(valueBytes(value, Values::AsXml));
            QXmlStreamReader xml(u"<a>"_s + fromCodePage(spelled) + u"</a>"_s);
            xml.readNextStartElement();
            const QString read = xml.readElementText();
            fuzz::expect(!xml.hasError(), "a value that XML refuses", value, xml.errorString());
            QString wanted = fuzz::asWritten(value);
            wanted.removeIf([](QChar c) {
                return c.category() == QChar::Other_Control && c != u'\t' && c != u'\n';
            });
            fuzz::expectSame(read, wanted, "a value comes back otherwise");
        }
    }
}

} // namespace

void kervan::fuzz::take(QByteArrayView input)
{
    Pieces pieces(input);
    const Case given = caseOf(pieces);
    fillQuickly(given);
    accumulate(given);
    if (given.spelling == Values::AsXml)
        spellAsXml(given);
}
