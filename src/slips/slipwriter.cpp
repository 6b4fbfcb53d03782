#include "slips/slipwriter.h"

#include "base/codepage.h"
#include "base/failure.h"
#include "logoxml/accumulated.h"
#include "logoxml/document.h"
#include "text/dates.h"
#include "text/numbers.h"
#include "text/spellings.h"

#include <QScopeGuard>
#include <QTime>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int dateColumn = Hareket::Tarih;
static_assert(dateColumn == BankaFisi::FisTarihi && dateColumn == DuzeyHareket::Tarih);

struct SlipTexts
{
    QString record;
    QString header;
    QString footer;
};

SlipTexts textsOf(const SlipDocument &document, bool salesman)
{
    const QString form = salesman ? u"carifisduzey-"_s : u"cafis-"_s;
    switch (document.kind) {
    case SlipKind::Note:
        return {u"cafis-sentex"_s, u"cafis-senbastex"_s, u"cafis-sensontex"_s};
    case SlipKind::Cheque:
        return {u"cafis-cektex"_s, u"cafis-senbastex"_s, u"cafis-sensontex"_s};
    case SlipKind::Cash:
        return {form + u"kasatex"_s, u"kasabastex"_s, u"kasasontex"_s};
    case SlipKind::Bank:
        return {u"cafis-bankatex"_s, u"cafis-bankabastex"_s, u"cafis-bankasontex"_s};
    case SlipKind::Card:
        return {form + u"kartex"_s, u"cafis-karbastex"_s, u"cafis-karsontex"_s};
    case SlipKind::None:
        break;
    }
    throw Failure(u"\"%1\" için şablon yok, belge yazılmadı."_s.arg(document.title));
}

QList<QByteArray> placeholdersOf(const SlipDocument &document)
{
    QList<QByteArray> placeholders{"saat", "dakika", "saniye"};
    for (const SlipWord &word : document.words)
        placeholders << toCodePage(word.placeholder());
    return placeholders;
}

void takeValues(const SlipDocument &document, const SlipRow &row, QTime time, QStringList &values)
{
    values = {QString::number(time.hour()), QString::number(time.minute()),
              QString::number(time.second())};
    for (const SlipWord &word : document.words)
        values << word.text(row);
}

int rowsTaken(const SlipDocument &document, const Grid &grid)
{
    int count = 0;
    for (int row = 0; row < grid.rows(); ++row)
        count += document.takes(grid, row);
    return count;
}

} // namespace

// A workbook's cell of a date with a time spells both.
QDate movementDay(const QString &cell)
{
    const QStringView text = trimmedBlanks(cell);
    const qsizetype blank = text.indexOf(u' ');
    const QString behind = blank > 0 ? text.sliced(blank).trimmed().toString() : QString();
    const bool timed = QTime::fromString(behind, u"H:mm:ss"_s).isValid() ||
                       QTime::fromString(behind, u"H:mm"_s).isValid();
    return toDate(timed ? text.first(blank) : text);
}

const SlipRow::Date &SlipRow::date() const
{
    const QString &text = cell(dateColumn);
    if (text == m_dateText && !m_date.yil.isEmpty())
        return m_date;
    QDate day;
    if (const auto failed = passOver([&] { day = movementDay(text); }))
        throw Failure(u"%1. satır: %2"_s.arg(m_row + 1).arg(failed->description()));
    const QString month = masked(double(day.month()), "00"_mask);
    const QString year = QString::number(day.year());
    m_dateText = text;
    m_date = {.tarih = masked(double(day.day()), "00"_mask) + u'.' + month + u'.' + year,
              .ay = QString::number(day.month()),
              .ikiHaneliAy = month,
              .yil = year};
    return m_date;
}

Filling fillingOf(const SlipDocument &document, const SlipSource &source, const Clock &clock)
{
    const QList<QByteArray> placeholders = placeholdersOf(document);
    return {placeholders, Sablon(sablon(textsOf(document, source.salesman).record), placeholders),
            [&document, &clock, row = SlipRow(source)](int number) mutable {
                QStringList values;
                row.moveTo(number);
                takeValues(document, row, clock.now().time(), values);
                return values;
            }};
}

int writeSlips(const SlipDocument &document, const SlipSource &source, const Clock &clock,
               ProgressField &progress, const QString &path)
{
    const Grid &grid = source.grid;
    const SlipTexts texts = textsOf(document, source.salesman);
    AccumulatedBody body(sablon(texts.record), placeholdersOf(document), source.spelling);
    const int count = rowsTaken(document, grid);
    progress.start(document.barCountsAllRows ? grid.rows() : count);
    const auto hide = qScopeGuard([&] { progress.finish(); });
    // The line end in front of the footer belongs to it, not to the last record.
    const Belge frame{sablon(texts.header), {}, {}, "\r\n" + sablon(texts.footer), source.spelling};
    belgeyaz(frame, DocumentEnd::AsItStands, path, [&](const TakePiece &take) {
        SlipRow row(source);
        QStringList values;
        for (int i = 0; i < grid.rows(); ++i) {
            const bool taken = document.takes(grid, i);
            if (taken || document.barCountsAllRows)
                progress.step();
            if (!taken)
                continue;
            row.moveTo(i);
            takeValues(document, row, clock.now().time(), values);
            body.add(values);
            body.handOver(take);
        }
        body.handOverAll(take);
    });
    return count;
}

} // namespace kervan
