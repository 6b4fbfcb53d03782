#pragma once

#include "base/codepage.h"

#include <QByteArray>
#include <QString>

namespace kervan {

/// Writes a fixed-column line by column number, counted from 1 as in the layouts of the sources, so
/// that a wrong number in a record table shows.
class Ruler
{
public:
    explicit Ruler(QStringView start = {}) { put(1, start); }
    Ruler &put(qsizetype column, QStringView text)
    {
        m_line = m_line.leftJustified(column - 1 + text.size(), u' ');
        m_line.replace(column - 1, text.size(), text.toString());
        return *this;
    }
    const QString &text() const { return m_line; }
    /// The line in the source's code page, with CR LF.
    QByteArray line() const { return toCodePage(m_line) + "\r\n"; }

private:
    QString m_line;
};

} // namespace kervan
