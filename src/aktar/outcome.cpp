#include "aktar/outcome.h"

#include "check/documentreader.h"
#include "text/masks.h"
#include "text/numbers.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// The sum of a document as it stands in it: nothing where a record has none.
QString sumOf(const QString &path)
{
    Decimal sum;
    bool isTold = false;
    bool isWhole = true;
    readDocument(path, [&](const DocumentRecord &record) {
        isTold = true;
        isWhole = isWhole && record.sum;
        sum += record.sum.value_or(Decimal());
    });
    if (!isTold || !isWhole)
        return {};
    return masked(toNumber(sum.text()), "#,##0.00"_mask);
}

QString levelOf(const Finding &finding)
{
    return finding.level == Level::Error ? u"Hata"_s : u"Uyarı"_s;
}

QJsonObject objectOf(const Finding &finding)
{
    QJsonObject object{{u"duzey"_s, levelOf(finding)},
                       {u"kural"_s, finding.rule},
                       {u"bulgu"_s, finding.text},
                       {u"care"_s, finding.cure}};
    if (finding.row >= 0)
        object[u"satir"_s] = finding.row + 1;
    return object;
}

QJsonObject objectOf(const Gap &gap)
{
    return {{u"tur"_s, gap.kind},
            {u"kod"_s, gap.code},
            {u"satir"_s, gap.lines},
            {u"belge"_s, gap.documents}};
}

QJsonObject countersOf(const QStringList &counters)
{
    return {{u"kasa"_s, counters.value(0)}, {u"banka"_s, counters.value(1)}};
}

QString lineOf(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n';
}

} // namespace

int Outcome::count(Level level) const
{
    return static_cast<int>(std::ranges::count(findings, level, &Finding::level));
}

OutcomeDocument documentOf(const Notes::Written &written, const QString &path)
{
    return {.path = path,
            .kind = written.what.section(u' ', 1), // "120 fatura" without its number
            .count = written.count,
            .sum = sumOf(written.path)};
}

Status worse(Status a, Status b)
{
    return std::max(a, b);
}

QString lineOf(const Finding &finding)
{
    QString line = levelOf(finding) + u": "_s;
    if (finding.row >= 0)
        line += u"%1. satır: "_s.arg(finding.row + 1);
    line += finding.text;
    if (!finding.cure.isEmpty())
        line += u" → "_s + finding.cure;
    return line;
}

QString lineOf(const Gap &gap)
{
    return u"Eksik: %1 %2, %3 satırda, %4 belgede"_s.arg(
        gap.kind, gap.code, QString::number(gap.lines), QString::number(gap.documents));
}

QString jsonOf(const Outcome &outcome)
{
    QJsonArray findings;
    for (const Finding &finding : outcome.findings)
        findings << objectOf(finding);
    QJsonArray gaps;
    for (const Gap &gap : outcome.gaps)
        gaps << objectOf(gap);
    QJsonObject object{
        {u"kaynak"_s, outcome.source},
        {u"durum"_s, int(outcome.status)},
        {u"satir"_s, outcome.rows},
        {u"secilen"_s, outcome.selected},
        {u"hata"_s, outcome.count(Level::Error)},
        {u"uyari"_s, outcome.count(Level::Warning)},
        {u"bulgular"_s, findings},
        {u"eksikler"_s, gaps},
        {u"iletiler"_s, QJsonArray::fromStringList(outcome.notes)},
        {u"sayaclar"_s, QJsonObject{{u"once"_s, countersOf(outcome.countersBefore)},
                                    {u"sonra"_s, countersOf(outcome.countersAfter)}}},
        {u"baslangic"_s, outcome.begun.toString(Qt::ISODate)},
        {u"sureler"_s, QJsonObject{{u"okuma"_s, outcome.readTime},
                                   {u"denetim"_s, outcome.checkTime},
                                   {u"yazma"_s, outcome.writeTime}}}};
    QString lines;
    for (const OutcomeDocument &document : outcome.documents) {
        object[u"dosya"_s] = document.path;
        object[u"tur"_s] = document.kind;
        object[u"adet"_s] = document.count;
        object[u"toplam"_s] = document.sum.isEmpty() ? QJsonValue() : QJsonValue(document.sum);
        lines += lineOf(object);
    }
    return lines.isEmpty() ? lineOf(object) : lines;
}

QString textOf(const Outcome &outcome)
{
    QString lines;
    for (const OutcomeDocument &document : outcome.documents) {
        lines += u"%1: %2 %3"_s.arg(QDir::toNativeSeparators(document.path),
                                    QString::number(document.count), document.kind);
        lines += document.sum.isEmpty() ? u"\n"_s : u", toplam %1\n"_s.arg(document.sum);
    }
    return lines;
}

} // namespace kervan
