#pragma once

#include <QList>
#include <QString>

namespace kervan {

/// What the columns of a transfer's list mean, so that one piece can check, sum up and compare the
/// lists of all. Columns count from 0; -1 where the list has none of the kind. A list that changes
/// its columns changes its shape.
struct ListShape
{
    QString what;    ///< what a row is, as the notes count it: "fatura"
    int number = -1; ///< of the document: invoice number, slip number, card code
    int date = -1;
    int customer = -1;
    int title = -1;                             ///< of the customer
    QList<int> amounts = {};                    ///< summed up; the first one is the document's own
    QString amountIs = QStringLiteral("tutar"); ///< what is summed up
    bool renumbered = false; ///< each read gives other numbers, so they tell no row again
};

} // namespace kervan
