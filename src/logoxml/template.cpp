#include "logoxml/template.h"

#include "base/codepage.h"

#include <QFile>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

QByteArray sablon(const QString &name)
{
    QFile file(u":/logoxml/templates/%1.xml"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("template %s is missing", qPrintable(name));
    return toCodePage(QString::fromUtf8(file.readAll()));
}

QByteArray sablondoldur(QByteArray text, std::span<const Fill> fills)
{
    for (const Fill &fill : fills)
        text.replace(fill.find, fill.value);
    return text;
}

QList<Fill> fillsOf(const QList<QByteArray> &placeholders, std::span<const QString> values)
{
    QList<Fill> fills;
    for (qsizetype i = 0; i < placeholders.size(); ++i)
        fills.append({placeholders[i], toCodePage(values[static_cast<std::size_t>(i)])});
    return fills;
}

bool hasSmallLetter(const QString &text)
{
    return std::ranges::any_of(text, [](QChar c) { return c >= u'a' && c <= u'z'; });
}

Sablon::Sablon(QByteArray text, QList<QByteArray> placeholders)
    : m_text(std::move(text))
    , m_placeholders(std::move(placeholders))
    , m_literals{m_text}
{
    for (qsizetype i = 0; i < m_placeholders.size(); ++i) {
        split(i);
        m_lettered = m_lettered && hasSmallLetter(QString::fromLatin1(m_placeholders[i]));
    }
    for (qsizetype slot = 0; slot < m_slots.size(); ++slot) {
        m_simple = m_simple && isBorderSafe(slot, m_slots[slot].placeholder + 1);
        m_isolated = m_isolated && isBorderSafe(slot, 0);
    }
}

void Sablon::split(qsizetype placeholder)
{
    const QByteArray &find = m_placeholders[placeholder];
    for (qsizetype i = 0; i < m_literals.size(); ++i) {
        const qsizetype at = m_literals[i].indexOf(find);
        if (at < 0)
            continue;
        m_literals.insert(i + 1, m_literals[i].sliced(at + find.size()));
        m_literals[i].truncate(at);
        m_slots.insert(i, Slot{placeholder});
    }
}

// A placeholder could be found across a border of the value only if it held the byte that
// stands there in the template: the one behind the value anywhere but at its start, the one in
// front of it anywhere but at its end. Two values side by side are not looked into.
bool Sablon::isBorderSafe(qsizetype slot, qsizetype firstPlaceholder) const
{
    const QByteArray &before = m_literals[slot];
    const QByteArray &behind = m_literals[slot + 1];
    const bool first = slot == 0;
    const bool last = slot + 1 == m_slots.size();
    if ((before.isEmpty() && !first) || (behind.isEmpty() && !last))
        return false;
    for (qsizetype i = firstPlaceholder; i < m_placeholders.size(); ++i) {
        const QByteArrayView later = m_placeholders[i];
        if (!behind.isEmpty() && later.sliced(1).contains(behind.front()))
            return false;
        if (!before.isEmpty() && later.chopped(1).contains(before.back()))
            return false;
    }
    return true;
}

bool Sablon::isSearchedAgain(std::span<const QString> values) const
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (m_lettered && !hasSmallLetter(values[i]))
            continue;
        const QByteArray value = toCodePage(values[i]);
        for (qsizetype later = static_cast<qsizetype>(i) + 1; later < m_placeholders.size();
             ++later) {
            if (value.contains(m_placeholders[later]))
                return true;
        }
    }
    return false;
}

bool Sablon::mayHoldPlaceholder(std::span<const QString> values) const
{
    const auto holdsOne = [this](const QString &value) {
        if (m_lettered && !hasSmallLetter(value))
            return false;
        const QByteArray bytes = toCodePage(value);
        return std::ranges::any_of(m_placeholders,
                                   [&](const QByteArray &word) { return bytes.contains(word); });
    };
    return !m_isolated || std::ranges::any_of(values, holdsOne);
}

void Sablon::doldur(std::span<const QString> values, QByteArray &out) const
{
    Q_ASSERT(static_cast<qsizetype>(values.size()) == m_placeholders.size());
    if (!m_simple || isSearchedAgain(values)) {
        out += sablondoldur(m_text, fillsOf(m_placeholders, values));
        return;
    }
    for (qsizetype slot = 0; slot < m_slots.size(); ++slot) {
        out += m_literals[slot];
        appendToCodePage(out, values[static_cast<std::size_t>(m_slots[slot].placeholder)]);
    }
    out += m_literals.last();
}

} // namespace kervan
