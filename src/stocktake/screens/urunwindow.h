#pragma once

#include "controls/gridview.h"
#include "stocktake/urunform.h"

#include <QAbstractItemDelegate>
#include <QDialog>
#include <QPointer>

class QLabel;

namespace kervan {

/// The list of prices. A cell whose text is no price stays in edit until it is one, or Esc.
class PriceView : public GridView
{
    Q_OBJECT

public:
    using GridView::GridView;
    bool holdsRefused() const { return m_refused; }

Q_SIGNALS:
    void refused(const QString &text);
    /// A cell is in edit no longer.
    void left();

protected:
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    QPointer<QWidget> m_refused;
};

/// The window of the dealer prices, modal over the frame.
class UrunWindow : public QDialog
{
    Q_OBJECT

public:
    explicit UrunWindow(Program &program, QWidget *parent = nullptr);

    Urunform &urunform() { return m_urunform; }
    /// Goes to the price of a product, which gets a row if it has none.
    void goTo(const QString &kod);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    PriceView *makeView();
    void tell(const QString &text);
    void save();

    Urunform m_urunform;
    QLabel *m_note;
    PriceView *m_view;
    bool m_changed = false; // something was typed since the table was read
};

} // namespace kervan
