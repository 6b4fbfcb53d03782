#include "check/documentcache.h"

#include "base/codepage.h"

#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t mostRecords = 2'000'000; // of all folders together
constexpr std::size_t mostFiles = 20'000;

// Year, month and day of a text that begins with day, month and year; 0 for any other.
int dayOf(QStringView text)
{
    text = text.trimmed();
    std::array<int, 3> parts{};
    std::size_t part = 0;
    int digits = 0;
    for (const QChar c : text) {
        if (c >= u'0' && c <= u'9') {
            if (++digits > 4)
                return 0;
            parts[part] = parts[part] * 10 + (c.unicode() - u'0');
        } else if (part < 2 && digits > 0 && (c == u'.' || c == u'/' || c == u'-')) {
            ++part;
            digits = 0;
        } else if (c == u' ' && part == 2) {
            break; // a time
        } else {
            return 0;
        }
    }
    if (part < 2 || digits == 0 || parts[0] > 31 || parts[1] > 12)
        return 0;
    if (digits <= 2)
        parts[2] += parts[2] < 30 ? 2000 : 1900;
    return (parts[2] * 100 + parts[1]) * 100 + parts[0];
}

constexpr std::size_t seed = 20'240'307;

quint64 digest(QStringView text, quint64 before)
{
    return qHash(text, static_cast<std::size_t>(before) ^ seed) * 0x9E3779B97F4A7C15ULL + before;
}

// Kinds part the numbers of these; other families have but one.
bool hasKinds(DocumentFamily family)
{
    return family == DocumentFamily::Invoices || family == DocumentFamily::Rolls;
}

quint64 familyKey(DocumentFamily family, QStringView kind)
{
    const auto own = static_cast<quint64>(family) + 1;
    return hasKinds(family) ? digest(kind, own) : own;
}

// The number behind the prefix of a counter, 0 where it has another.
qint64 numbered(const QByteArray &text, QByteArrayView prefix)
{
    return text.startsWith(prefix) ? std::max(text.sliced(prefix.size()).toLongLong(), 0LL) : 0;
}

} // namespace

quint64 numberKey(DocumentFamily family, QStringView kind, QStringView number)
{
    return digest(number.trimmed(), familyKey(family, kind));
}

quint64 personKey(DocumentFamily family, QStringView kind, QStringView date, QStringView customer)
{
    const int day = dayOf(date);
    const quint64 dated = day != 0 ? familyKey(family, kind) * 31 + static_cast<quint64>(day)
                                   : digest(date.trimmed(), familyKey(family, kind));
    return digest(customer.trimmed(), dated);
}

std::shared_ptr<DocumentCache> DocumentCache::shared()
{
    static std::weak_ptr<DocumentCache> one;
    auto cache = one.lock();
    if (!cache)
        one = cache = std::make_shared<DocumentCache>();
    return cache;
}

std::vector<std::shared_ptr<const KnownDocument>>
DocumentCache::documents(const QStringList &folders, const std::atomic_bool &stop)
{
    const std::lock_guard lock(m_reading);
    if (stop)
        return {};
    struct Found
    {
        QString path;
        qint64 size;
        qint64 time;
    };
    std::vector<Found> files;
    QStringList seen;
    for (const QString &folder : folders) {
        const QString name = QDir::cleanPath(folder);
        if (folder.isEmpty() || seen.contains(name))
            continue;
        seen << name;
        QDirIterator entries(name, QDir::Files); // a name filter would be a QRegularExpression
        while (entries.hasNext() && !stop) {
            entries.next();
            const QFileInfo info = entries.fileInfo();
            if (info.fileName().endsWith(u".xml"_s, Qt::CaseInsensitive))
                files.push_back(
                    {info.filePath(), info.size(), info.lastModified().toMSecsSinceEpoch()});
        }
    }
    std::ranges::stable_sort(files, [](const Found &a, const Found &b) { return a.time > b.time; });

    std::vector<std::shared_ptr<const KnownDocument>> found;
    std::size_t held = 0;
    for (const Found &file : files) {
        if (held >= mostRecords || found.size() >= mostFiles) {
            KnownDocument passed(file.path, file.size, file.time);
            passed.fault = u"Klasörde çok fazla belge var, bu ve daha eskileri okunmadı."_s;
            found.push_back(std::make_shared<const KnownDocument>(std::move(passed)));
            break;
        }
        auto document = this->document(file.path, file.size, file.time, stop);
        if (stop)
            return {};
        held += document->records.size();
        m_known.insert(document->path, document);
        found.push_back(std::move(document));
    }
    // What is no longer there is forgotten.
    QSet<QString> there;
    for (const auto &document : found)
        there << document->path;
    m_known.removeIf([&](const auto &known) {
        return !there.contains(known.key()) && seen.contains(QFileInfo(known.key()).path());
    });
    return found;
}

std::shared_ptr<const KnownDocument>
DocumentCache::document(const QString &path, qint64 size, qint64 time, const std::atomic_bool &stop)
{
    const auto known = m_known.constFind(path);
    if (known != m_known.cend() && (*known)->size == size && (*known)->time == time &&
        !(*known)->isUnread())
        return *known;
    KnownDocument document(path, size, time);
    using Field = DocumentRecord::Field;
    QString kind, number, date, customer;
    const auto textOf = [](QString &text, const QByteArray &bytes) {
        text.resize(0);
        appendFromCodePage(text, bytes);
    };
    const DocumentReading reading = readDocument(
        path,
        [&](const DocumentRecord &record) {
            textOf(kind, record[Field::Kind]);
            textOf(number, record[Field::Number]);
            textOf(date, record[Field::Date]);
            textOf(customer, record[Field::Customer]);
            document.records.push_back({.number = numberKey(record.family, kind, number),
                                        .person = personKey(record.family, kind, date, customer),
                                        .net = record.net.value_or(Decimal()),
                                        .sum = record.sum.value_or(Decimal()),
                                        .hasNet = record.net.has_value(),
                                        .hasSum = record.sum.has_value(),
                                        .lines = record.lines});
            if (record.family == DocumentFamily::CashSlips)
                document.cashNumber =
                    std::max(document.cashNumber, numbered(record[Field::Number], "KN"));
            if (record.family == DocumentFamily::CardSlips) // from the same counter
                document.cashNumber =
                    std::max(document.cashNumber, numbered(record[Field::Number], "KK"));
            if (record.family == DocumentFamily::BankSlips)
                document.bankNumber =
                    std::max(document.bankNumber, numbered(record[Field::Number], "BT"));
        },
        &stop);
    document.family = reading.family;
    document.fault = reading.fault;
    document.isForeign =
        !reading.fault.isEmpty() && reading.bytes > 0 && reading.family == DocumentFamily::Unknown;
    document.isHalf = document.fault == emptyDocument;
    if (document.fault.isEmpty() && !reading.whole) {
        document.isHalf = true;
        document.fault = u"Belge yarım kalmış."_s;
    }
    if (!document.fault.isEmpty()) { // half a document was never imported
        document.records = {};
        document.cashNumber = document.bankNumber = 0;
    }
    document.records.shrink_to_fit();
    return std::make_shared<const KnownDocument>(std::move(document));
}

} // namespace kervan
