#include "check/writtendocuments.h"

#include "base/failure.h"
#include "check/documenttable.h"
#include "check/leftdocuments.h"
#include "store/sidefiles.h"
#include "text/numbers.h"

#include <QDir>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int whenIdle = 300; // milliseconds without another change
constexpr int cents = 2;

quint64 contentKey(quint64 person, Decimal amount)
{
    return person ^ qHash(amount, 7) * 0x9E3779B97F4A7C15ULL;
}

QString told(const KnownDocument &document)
{
    return u"%1 (%2)"_s.arg(
        QDir::toNativeSeparators(document.path),
        QDateTime::fromMSecsSinceEpoch(document.time).toString(u"dd.MM.yyyy HH:mm"_s));
}

bool isCard(DocumentFamily family)
{
    return family == DocumentFamily::Accounts || family == DocumentFamily::Items;
}

} // namespace

QString invoiceKind(QStringView faturaTuru)
{
    const QStringView kind = faturaTuru.left(2);
    return kind == u"20" ? u"1"_s : kind == u"30" ? u"3"_s : kind == u"40" ? u"6"_s : u"8"_s;
}

WrittenDocuments::WrittenDocuments(QObject *parent)
    : QObject(parent)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(whenIdle);
    connect(&m_soon, &QTimer::timeout, this, &WrittenDocuments::read);
}

void WrittenDocuments::setFolders(const QStringList &folders, const QStringList &targets)
{
    if (folders == m_folders)
        return;
    m_folders = folders;
    m_targets = targets;
    m_reader.stop();
    m_found = {};
    markRows();
    refresh();
    Q_EMIT changed();
}

void WrittenDocuments::refresh()
{
    m_soon.start();
}

void WrittenDocuments::read()
{
    m_reader.start<std::shared_ptr<Found>>(
        [cache = m_cache, folders = m_folders, targets = m_targets](const std::atomic_bool &stop) {
            for (const QString &target : targets)
                sweepDocuments(target);
            return std::make_shared<Found>(look(*cache, folders, stop));
        },
        [this](const std::shared_ptr<Found> &found) {
            m_found = std::move(*found);
            markRows();
            Q_EMIT changed();
        });
}

WrittenDocuments::Found WrittenDocuments::look(DocumentCache &cache, const QStringList &folders,
                                               const std::atomic_bool &stop)
{
    Found found{cache.documents(folders, stop), {}, {}, {}, true};
    std::size_t count = 0;
    for (const auto &document : found.documents)
        count += document->records.size();
    found.byNumber.reserve(count);
    found.byContent.reserve(count);
    for (std::size_t i = 0; i < found.documents.size(); ++i) {
        const auto &records = found.documents[i]->records;
        for (std::size_t k = 0; k < records.size(); ++k) {
            const auto document = static_cast<quint32>(i);
            const auto record = static_cast<quint32>(k);
            found.byNumber.push_back({records[k].number, document, record});
            if (records[k].hasSum)
                found.byContent.push_back(
                    {contentKey(records[k].person, records[k].sum), document, record});
        }
    }
    for (const auto &document : found.documents)
        found.names.push_back(
            {document->path, QDateTime::fromMSecsSinceEpoch(document->time), told(*document)});
    // Stable, so that the newest document stays in front.
    std::ranges::stable_sort(found.byNumber, {}, &Place::key);
    std::ranges::stable_sort(found.byContent, {}, &Place::key);
    return found;
}

void WrittenDocuments::setRows(const ListedRows &rows, qsizetype list)
{
    if (m_lists.size() <= list)
        m_lists.resize(list + 1);
    List &known = m_lists[list];
    known = {rows, {}, {}};
    known.rows.grid = nullptr;
    if (rows.grid) {
        const Grid &grid = *rows.grid;
        known.values.reserve(grid.rows());
        const auto cell = [&](int row, int column) {
            return column < 0 ? QStringView() : QStringView(grid.cell(row, column));
        };
        for (int row = 0; row < grid.rows(); ++row) {
            const QStringView number = cell(row, rows.number);
            known.values.append(
                {numberKey(rows.family, rows.kind, number),
                 personKey(rows.family, rows.kind, cell(row, rows.date), cell(row, rows.customer)),
                 Decimal::ofCell(cell(row, rows.amount)), !number.trimmed().isEmpty()});
        }
    }
    mark(known);
    Q_EMIT changed();
}

const KnownRecord &WrittenDocuments::recordAt(const Place &place) const
{
    return m_found.documents[place.document]->records[place.record];
}

void WrittenDocuments::markRows()
{
    for (List &list : m_lists)
        mark(list);
}

void WrittenDocuments::mark(List &list) const
{
    list.marks.clear();
    list.marks.resize(list.values.size());
    if (m_found.byNumber.empty())
        return;
    if (list.rows.by == ListedRows::ByContent)
        return markByContent(list);
    for (qsizetype i = 0; i < list.values.size(); ++i) {
        if (list.values[i].isNumbered)
            list.marks[i] = markByNumber(list, list.values[i]);
    }
}

std::span<const WrittenDocuments::Place>
WrittenDocuments::placesOf(const std::vector<Place> &places, quint64 key)
{
    return {std::ranges::lower_bound(places, key, {}, &Place::key),
            std::ranges::upper_bound(places, key, {}, &Place::key)};
}

WrittenMark WrittenDocuments::markByNumber(const List &list, const Row &row) const
{
    const ListedRows &rows = list.rows;
    const auto same = placesOf(m_found.byNumber, row.number);
    if (same.empty())
        return {};
    if (rows.family != DocumentFamily::Invoices)
        return markOf(WrittenMark::Same, same.front(),
                      isCard(rows.family) ? u"bu kod yazılmış"_s : u"bu numara yazılmış"_s);
    // Of several documents the one that agrees counts, else the newest.
    QString different;
    for (const Place &place : same) {
        const KnownRecord &record = recordAt(place);
        const bool isNet = rows.amountIs == ListedRows::Net;
        const bool isTold = isNet ? record.hasNet : record.hasSum;
        const Decimal written = isNet ? record.net : record.sum;
        const bool isOther = rows.date >= 0 && rows.customer >= 0 && record.person != row.person;
        const bool isOff =
            row.amount && isTold && !isSameAmount(rows.family, *row.amount, written, record.lines);
        if (!isOther && !isOff)
            return markOf(WrittenMark::Same, place, u"aynı fatura yazılmış"_s);
        if (different.isEmpty())
            different = isOff
                            ? u"aynı numara yazılmış, tutar farklı: belgede %1, listede %2"_s.arg(
                                  written.rounded(cents).text(), row.amount->rounded(cents).text())
                            : u"aynı numara yazılmış, cari ya da tarih farklı"_s;
    }
    return markOf(WrittenMark::Differs, *same.begin(), different);
}

// Each record of a document answers for one row: of three slips alike and two written, two are
// marked.
void WrittenDocuments::markByContent(List &list) const
{
    std::vector<quint32> taken(m_found.byContent.size()); // so many of those alike, at their first
    for (qsizetype i = 0; i < list.values.size(); ++i) {
        const Row &row = list.values[i];
        if (!row.amount)
            continue;
        const auto alike = placesOf(m_found.byContent, contentKey(row.person, *row.amount));
        if (alike.empty())
            continue;
        quint32 &next = taken[static_cast<std::size_t>(alike.data() - m_found.byContent.data())];
        if (next < alike.size())
            list.marks[i] = markOf(WrittenMark::Similar, alike[next++],
                                   u"benzeri yazılmış (tarih, cari ve tutar aynı)"_s);
    }
}

WrittenMark WrittenDocuments::markOf(WrittenMark::Kind kind, const Place &place,
                                     const QString &what) const
{
    const Name &name = m_found.names[place.document];
    return {kind, name.path, name.time, u"Bu klasörde "_s + what + u": "_s + name.told};
}

int WrittenDocuments::markedCount(qsizetype list) const
{
    return static_cast<int>(std::ranges::count_if(
        marks(list), [](const WrittenMark &mark) { return mark.kind != WrittenMark::None; }));
}

WrittenMark WrittenDocuments::numbered(DocumentFamily family, const QString &kind,
                                       const QString &number) const
{
    const auto same = number.trimmed().isEmpty()
                          ? std::span<const Place>()
                          : placesOf(m_found.byNumber, numberKey(family, kind, number));
    return same.empty() ? WrittenMark()
                        : markOf(WrittenMark::Same, same.front(), u"bu numara yazılmış"_s);
}

template<class Is>
QStringList WrittenDocuments::sentencesOf(Is is) const
{
    QStringList sentences;
    for (const auto &document : m_found.documents) {
        if (std::invoke(is, *document))
            sentences << u"%1 atlandı: %2"_s.arg(QDir::toNativeSeparators(document->path),
                                                 document->fault);
    }
    return sentences;
}

QStringList WrittenDocuments::skipped() const
{
    return sentencesOf([](const KnownDocument &document) {
        return !document.fault.isEmpty() && !document.isForeign;
    });
}

QStringList WrittenDocuments::unread() const
{
    return sentencesOf(&KnownDocument::isUnread);
}

QString WrittenDocuments::contentOf(const QString &path) const
{
    const QString known = QDir::cleanPath(path);
    for (const auto &document : m_found.documents) {
        if (document->fault.isEmpty() && QDir::cleanPath(document->path) == known)
            return u"%1 %2"_s.arg(document->records.size()).arg(nameOf(document->family));
    }
    return {};
}

QStringList counterWarnings(const std::vector<std::shared_ptr<const KnownDocument>> &documents,
                            const QString &programFolder, const QStringList &asked)
{
    struct Counter
    {
        QStringView file;
        QStringView prefix;
        qint64 KnownDocument::*highest;
    };
    static constexpr std::array<Counter, 2> counters{
        {{cashCounterFile, u"KN", &KnownDocument::cashNumber},
         {bankCounterFile, u"BT", &KnownDocument::bankNumber}}};
    QStringList sentences;
    for (const Counter &counter : counters) {
        if (!asked.contains(counter.file))
            continue;
        const KnownDocument *last = nullptr;
        for (const auto &document : documents) {
            if (!last || document.get()->*counter.highest > last->*counter.highest)
                last = document.get();
        }
        if (!last || last->*counter.highest == 0)
            continue;
        QString stored;
        passOver([&] { stored = readSingleValue(programFolder + u'/' + counter.file.toString()); });
        // The stored one was given out last; without one the next is the first.
        const auto next = static_cast<qint64>(number(stored).value_or(0)) + 1;
        if (next > last->*counter.highest)
            continue;
        sentences << u"Sayaç geride: sıradaki numara %1%2, ama bu klasörde %1%3 yazılmış: %4. "
                     "Logo'da aynı numara iki kez olabilir (%5)."_s.arg(
                         counter.prefix, QString::number(next).rightJustified(6, u'0'),
                         QString::number(last->*counter.highest).rightJustified(6, u'0'),
                         told(*last), counter.file);
    }
    return sentences;
}

} // namespace kervan
