#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "logoxml/spelling.h"
#include "logoxml/template.h"
#include "store/program.h"

#include <functional>
#include <optional>

namespace kervan {

// What the card transfers share: picking their sources and filling records.

/// Asks for a text export; nothing on cancel.
std::optional<QString> askSource(Program &program, const QString &title);
/// One column of all rows.
QStringList columnOf(const Grid &grid, int column);

/// Spells the moment as documents carry it: the machine's short date, and plain numbers without
/// leading zeros. Each call reads the clock afresh.
class CreationTime
{
public:
    explicit CreationTime(const Clock &clock)
        : m_clock(clock)
    {
    }
    QString tarih();
    QString saat() const { return QString::number(m_clock.now().time().hour()); }
    QString dakika() const { return QString::number(m_clock.now().time().minute()); }
    QString saniye() const { return QString::number(m_clock.now().time().second()); }

private:
    const Clock &m_clock;
    QDate m_date; // the date spelt last: spelling one takes longer than filling a record
    QString m_spelt;
};

/// The template of a card, with the line end that parts the records behind its own.
Sablon cardTemplate(const QString &name, const QList<QByteArray> &placeholders,
                    const XmlChoice &okunurBicim);

/// Writes the document of the screen ("cr") to the file: one filled card per row, in which
/// valuesOf(row) gives a value per placeholder. A file that can't be written is a Failure.
void writeCards(const QString &path, const QString &screen, const Sablon &card, int rows,
                ProgressField &progress, const std::function<QStringList(int row)> &valuesOf);

} // namespace kervan
