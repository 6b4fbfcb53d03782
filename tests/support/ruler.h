#pragma once

#include "base/codepage.h"

namespace kervan {

inline void layOver(QString &) {}

template<class... Rest>
void layOver(QString &line, qsizetype column, QStringView text, const Rest &...rest)
{
    line = line.leftJustified(column - 1 + text.size());
    line.replace(column - 1, text.size(), text.toString());
    layOver(line, rest...);
}

/// A fixed-column line with CR LF, in the source's code page. Fields are laid over `start` by
/// column number, counted from 1 as in the layouts of the sources, so that a wrong number in a
/// record table shows: ruled(u"@5", 80, u"F1", 148, u"0").
template<class... Fields>
QByteArray ruled(QStringView start, const Fields &...fields)
{
    QString line = start.toString();
    layOver(line, fields...);
    return toCodePage(line) + "\r\n";
}

} // namespace kervan
