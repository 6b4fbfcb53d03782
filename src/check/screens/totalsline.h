#pragma once

#include "base/notes.h"
#include "check/tickoffer.h"
#include "check/totals.h"

#include <QTimer>
#include <QWidget>

#include <functional>

class QAbstractItemView;
class QHBoxLayout;

namespace kervan {

class CutLabel;
class LinkButton;

/// One line under the lists of a transfer: what they come to, what was written of them, and what is
/// offered. It is as high as a line of text and wants no width of its own.
class TotalsLine : public QWidget
{
    Q_OBJECT

public:
    /// The keys of its links work anywhere on `window`. What is written is taken from the notes.
    TotalsLine(QWidget *window, Notes &notes);

    /// Tells of a list, and offers its ticks. Gives what it is told from.
    Totals &addList(Grid &rows, QAbstractItemView *view, const std::function<ListShape()> &shape);
    /// Tells of a list and of the rows that are selected in its view. Of two lists, the second one
    /// is told of while it has rows.
    void add(Totals &totals, QAbstractItemView *view);
    /// Offers the ticks of before a read.
    void add(TickOffer &offer);
    /// A link at the end, such as "Son listeyi aç"; one of that name is replaced, and an empty text
    /// takes it away.
    void offer(const QString &name, const QString &text, const QString &hint, const QString &keys,
               const std::function<void()> &accept);

    /// Of the documents that were just written, these files do not hold what was ticked; until the
    /// next read or write. An empty text takes it back.
    void setDisagreement(const QString &text, const QStringList &files = {});

private:
    struct List
    {
        Totals *totals;
        QAbstractItemView *view;
    };
    void soon();
    void show();
    void showWritten();
    RowSums selectedIn(const List &list) const;
    void showGood();
    QString sumOf(const Notes::Written &written) const;
    void showOffers();
    void acceptOffers();

    QWidget *m_window;
    Notes &m_notes;
    QList<List> m_lists;
    QList<TickOffer *> m_offers;
    QHBoxLayout *m_row;
    CutLabel *m_sums;
    CutLabel *m_written;
    CutLabel *m_disagreement;
    LinkButton *m_folder;
    QTimer m_soon;      // a walk over the keys ticks many rows
    QTimer m_quiet;     // nothing has changed for a while
    QStringList m_told; // what was written, as it was told first: ticks go on changing
    QStringList m_bad;  // files of it that are not as they should be
};

} // namespace kervan
