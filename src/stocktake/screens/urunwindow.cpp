#include "stocktake/screens/urunwindow.h"

#include "controls/gridview.h"
#include "controls/pictures.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Lets only a number be typed: digits, a decimal comma, a sign.
class NumberDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                          const QModelIndex &) const override
    {
        auto *edit = new QLineEdit(parent);
        edit->setFrame(false);
        edit->setAlignment(Qt::AlignRight);
        edit->setValidator(
            new QRegularExpressionValidator(QRegularExpression(u"-?\\d*(,\\d*)?"_s), edit));
        return edit;
    }
};

} // namespace

UrunWindow::UrunWindow(Program &program, QWidget *parent)
    : QDialog(parent)
    , m_urunform(program)
{
    setObjectName(u"urunform"_s);
    setWindowTitle(u"Ürünler"_s);
    auto *view = new GridView(m_urunform.l1, u"l1"_s);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setShowGrid(true);
    view->setTabKeyNavigation(true);
    view->setColumnHidden(Urunform::Sira, true);
    view->verticalHeader()->show();
    view->horizontalHeader()->setSectionResizeMode(Urunform::Ack, QHeaderView::Stretch);
    for (const int column : {Urunform::Fiyat, Urunform::Bfiyat})
        view->setItemDelegateForColumn(column, new NumberDelegate(view));
    view->installEventFilter(this);

    auto *save = new QPushButton(picture(u"save"_s), u"Kaydet"_s);
    save->setObjectName(u"chameleonButton7"_s);
    save->setToolTip(u"Kaydet (Ctrl+S)"_s);
    auto *close = new QPushButton(picture(u"close"_s), u"Kapat"_s);
    close->setObjectName(u"chameleonButton8"_s);
    close->setToolTip(u"Kapat (Esc)"_s);
    for (QPushButton *button : {save, close})
        button->setAutoDefault(false);
    connect(save, &QAbstractButton::clicked, this, &UrunWindow::save);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(new QShortcut(QKeySequence(u"Ctrl+S"_s), this), &QShortcut::activated, this,
            &UrunWindow::save);

    auto *column = new QVBoxLayout(this);
    column->addWidget(view, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(save);
    buttons->addWidget(close);
    column->addLayout(buttons);
    resize(820, 560);
    m_urunform.yukle();
    view->setCurrentIndex(m_urunform.l1.index(0, Urunform::Kod));
}

void UrunWindow::save()
{
    setFocus(); // ends the editing of a cell
    if (m_urunform.kaydet())
        accept();
}

// The key goes on to the view, which then moves to the row that was added.
bool UrunWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *view = qobject_cast<GridView *>(watched);
    if (view && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down)
        m_urunform.satirekle(view->currentIndex().row());
    return QDialog::eventFilter(watched, event);
}

} // namespace kervan
