#include "check/readback.h"

#include "base/codepage.h"
#include "base/grid.h"

#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The first place where the numbers part; empty where they don't.
QString partOf(const QStringList &listed, const QStringList &written)
{
    for (qsizetype i = 0; i < std::max(listed.size(), written.size()); ++i) {
        const QString wanted = fromCodePage(toCodePage(listed.value(i))).trimmed();
        const QString found = written.value(i).trimmed();
        if (wanted != found)
            return u"%1. kayıtta %2 beklenirken %3 var"_s.arg(i + 1).arg(
                wanted.isEmpty() ? u"hiçbiri"_s : wanted, found.isEmpty() ? u"hiçbiri"_s : found);
    }
    return {};
}

} // namespace

WrittenRows writtenRows(const Grid &grid, DocumentFamily family, bool tickedOnly, int numberColumn,
                        int amountColumn)
{
    WrittenRows rows{.family = family, .numbers = {}, .sum = {}};
    if (amountColumn >= 0)
        rows.sum = Decimal();
    for (int row = 0; row < grid.rows(); ++row) {
        if (tickedOnly && !grid.ticked(row))
            continue;
        ++rows.count;
        if (numberColumn >= 0)
            rows.numbers << grid.cell(row, numberColumn);
        if (!rows.sum)
            continue;
        if (const auto amount = Decimal::ofCell(grid.cell(row, amountColumn)))
            *rows.sum += *amount;
        else
            rows.sum.reset();
    }
    return rows;
}

ReadBack readBack(const QString &path, const WrittenRows &rows, const std::atomic_bool *stop)
{
    ReadBack result{.path = path, .sum = {}, .sentence = {}};
    QStringList numbers;
    Decimal sum;
    bool isSummed = true;
    qint64 lines = 0;
    const DocumentReading reading = readDocument(
        path,
        [&](const DocumentRecord &record) {
            if (!rows.numbers.isEmpty())
                numbers << fromCodePage(record[DocumentRecord::Number]);
            lines += record.lines;
            const auto &amount = rows.sumIsNet ? record.net : record.sum;
            if (amount)
                sum += *amount;
            else
                isSummed = false;
        },
        stop);
    result.problems = reading.problemCount;
    result.count = rows.family == DocumentFamily::Counts ? lines : reading.records;
    if (rows.sum && isSummed)
        result.sum = sum;
    const auto refuted = [&]() -> QString {
        if (!reading.fault.isEmpty())
            return u"belge geri okunamadı: %1"_s.arg(reading.fault);
        if (!reading.whole)
            return u"belge yarım kalmış"_s;
        if (reading.family != rows.family)
            return u"belge başka türden"_s;
        if (result.count != rows.count)
            return u"belgede %1 kayıt var, listeden %2 kayıt yazılacaktı"_s.arg(result.count)
                .arg(rows.count);
        if (QString part = partOf(rows.numbers, numbers);
            !rows.numbers.isEmpty() && !part.isEmpty())
            return part;
        if (rows.sum && result.sum && !isSameAmount(rows.family, *rows.sum, *result.sum, lines))
            return u"belgedeki tutar %1, listedeki %2"_s.arg(result.sum->text(), rows.sum->text());
        return {};
    }();
    result.agrees = refuted.isEmpty() && result.problems == 0;
    const QString name = QFileInfo(path).fileName();
    if (!refuted.isEmpty())
        result.sentence = u"%1 listeyle uyuşmuyor: %2."_s.arg(name, refuted);
    else if (!result.agrees)
        result.sentence =
            u"Logo %1 belgesini okuyamaz: Xml'i %2 yerde bozuk, ilki %3. satırda."_s.arg(
                name, QString::number(result.problems),
                QString::number(reading.problems.value(0).line));
    else if (result.sum)
        result.sentence =
            u"Belge geri okundu: %1 kayıt, tutar %2, listeyle aynı."_s.arg(result.count)
                .arg(rows.sum->text());
    else if (rows.sum)
        result.sentence =
            u"Belge geri okundu: %1 kayıt, listeyle aynı (tutarı okunamayan var)."_s.arg(
                result.count);
    else
        result.sentence = u"Belge geri okundu: %1 kayıt, listeyle aynı."_s.arg(result.count);
    return result;
}

void ReadBackBeside::start(const QString &path, const WrittenRows &rows)
{
    m_reader.start<ReadBack>(
        [path, rows](const std::atomic_bool &stop) { return readBack(path, rows, &stop); },
        [this](const ReadBack &result) { Q_EMIT done(result); });
}

} // namespace kervan
