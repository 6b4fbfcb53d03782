#pragma once

#include "logoxml/template.h"

#include <QByteArrayList>

#include <span>

namespace kervan {

/// The body of a slip document: each record is a line end and a template behind all records so
/// far, and its filling runs over the whole of that text. So a placeholder word in a value of an
/// earlier record is changed by the filling of a later one.
/// A record without any placeholder word left can never change again and isn't searched.
class AccumulatedBody
{
public:
    AccumulatedBody(const QByteArray &record, QList<QByteArray> placeholders);

    /// Appends a record and fills the whole text with one value per placeholder, in their order. A
    /// record that values swell beyond all measure is a Failure.
    void add(std::span<const QString> values);

    /// The records, each with its line end in front.
    const QByteArrayList &records() const { return m_records; }

private:
    bool holdsPlaceholder(const QByteArray &text) const;

    Sablon m_record;
    QList<QByteArray> m_placeholders;
    QByteArrayList m_records;
    QList<qsizetype> m_changeable; // records that still hold a placeholder word
};

} // namespace kervan
