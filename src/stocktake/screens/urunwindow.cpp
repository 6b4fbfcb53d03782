#include "stocktake/screens/urunwindow.h"

#include "controls/gridview.h"
#include "controls/pictures.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpressionValidator>
#include <QScreen>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Lets only a number be typed: digits, a sign, and a decimal comma, which a point becomes.
class NumberValidator : public QRegularExpressionValidator
{
public:
    explicit NumberValidator(QObject *parent)
        : QRegularExpressionValidator(QRegularExpression(u"-?\\d*(,\\d*)?"_s), parent)
    {
    }
    State validate(QString &input, int &position) const override
    {
        input.replace(u'.', u',');
        return QRegularExpressionValidator::validate(input, position);
    }
};

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
        edit->setValidator(new NumberValidator(edit));
        return edit;
    }
};

} // namespace

UrunWindow::UrunWindow(Program &program, QWidget *parent)
    : QDialog(parent)
    , m_urunform(program)
    , m_note(new QLabel)
{
    setObjectName(u"urunform"_s);
    setWindowTitle(u"Ürünler"_s);
    GridView *view = makeView();
    m_note->setObjectName(u"bilgi"_s);
    auto *save = new QPushButton(picture(u"save"_s), u"Kaydet"_s);
    save->setObjectName(u"chameleonButton7"_s);
    save->setToolTip(u"Kaydet (Ctrl+S)"_s);
    auto *close = new QPushButton(picture(u"close"_s), u"Kapat"_s);
    close->setObjectName(u"chameleonButton8"_s);
    for (QPushButton *button : {save, close})
        button->setAutoDefault(false);
    connect(save, &QAbstractButton::clicked, this, &UrunWindow::save);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);
    connect(new QShortcut(QKeySequence(u"Ctrl+S"_s), this), &QShortcut::activated, this,
            &UrunWindow::save);

    auto *column = new QVBoxLayout(this);
    column->addWidget(view, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_note, 1);
    buttons->addWidget(save);
    buttons->addWidget(close);
    column->addLayout(buttons);
    resize(QSize(820, 560).boundedTo(screen()->availableSize() - QSize(16, 40)));
    m_urunform.yukle();
    view->setCurrentIndex(m_urunform.l1.index(0, Urunform::Kod));
    connect(&m_urunform.l1, &Grid::dataChanged, this, [this] { m_changed = true; });
}

GridView *UrunWindow::makeView()
{
    auto *view = new GridView(m_urunform.l1, u"l1"_s);
    view->setAccessibleName(u"Ürünler"_s);
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
    return view;
}

// One Esc too many behind an editor must not lose what was typed.
void UrunWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_changed)
        m_note->setText(u"Kaydedilmemiş değişiklik var: \"Kaydet\" (Ctrl+S) ya da \"Kapat\"."_s);
    else
        QDialog::keyPressEvent(event);
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
