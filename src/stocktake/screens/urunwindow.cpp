#include "stocktake/screens/urunwindow.h"

#include "controls/announcing.h"
#include "controls/griddelegate.h"
#include "controls/keyedbutton.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QValidator>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Lets only what prices are made of be typed; whether it is one shows at the end.
class PriceValidator : public QValidator
{
public:
    PriceValidator(PriceView *view, QObject *parent)
        : QValidator(parent)
        , m_view(view)
    {
    }
    void fixup(QString &input) const override { Q_EMIT m_view->refused(input); }
    State validate(QString &input, int &position) const override
    {
        static const QRegularExpression blanks(u"\\s"_s);
        static const QRegularExpression others(u"[^-.,0-9]"_s);
        input.remove(blanks); // a cell of a spreadsheet is pasted with its line end
        position = qMin(position, static_cast<int>(input.size()));
        if (input.contains(others))
            return Invalid;
        return fiyatoku(input) ? Acceptable : Intermediate;
    }

private:
    PriceView *m_view;
};

class PriceDelegate : public GridDelegate
{
public:
    explicit PriceDelegate(PriceView *view)
        : GridDelegate(view)
        , m_view(view)
    {
    }
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &,
                          const QModelIndex &index) const override
    {
        auto *edit = new QLineEdit(parent);
        edit->setAccessibleName(headingOf(index));
        edit->setFrame(false);
        edit->setAlignment(Qt::AlignRight);
        edit->setValidator(new PriceValidator(m_view, edit));
        return edit;
    }
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override
    {
        if (const auto price = fiyatoku(static_cast<QLineEdit *>(editor)->text()))
            model->setData(index, *price, Qt::EditRole);
    }

private:
    PriceView *m_view;
};

} // namespace

void PriceView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    auto *edit = qobject_cast<QLineEdit *>(editor);
    if (!edit || edit->hasAcceptableInput() || hint == QAbstractItemDelegate::RevertModelCache) {
        m_refused = nullptr;
        GridView::closeEditor(editor, hint); // tells once more that it refuses, as it goes
        Q_EMIT left();
        return;
    }
    m_refused = editor;
    Q_EMIT refused(edit->text());
    // Behind the click or key that wanted to leave the cell.
    QTimer::singleShot(0, edit, [this, edit] {
        setCurrentIndex(indexAt(edit->geometry().center()));
        edit->setFocus();
        edit->selectAll();
    });
}

UrunWindow::UrunWindow(Program &program, QWidget *parent)
    : QDialog(parent)
    , m_urunform(program)
    , m_note(new QLabel)
    , m_view(makeView())
{
    setObjectName(u"urunform"_s);
    setWindowTitle(u"Ürünler"_s);
    m_note->setObjectName(u"bilgi"_s);
    auto *save = dialogButton(u"chameleonButton7"_s, u"Kaydet"_s, u"Ctrl+S"_s, u"save"_s);
    auto *close = dialogButton(u"chameleonButton8"_s, u"Kapat"_s, u"Ctrl+W"_s, u"close"_s);
    for (QPushButton *button : {save, close})
        button->setAutoDefault(false);
    connect(save, &QAbstractButton::clicked, this, &UrunWindow::save);
    connect(close, &QAbstractButton::clicked, this, &QDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_view, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_note, 1);
    buttons->addWidget(save);
    buttons->addWidget(close);
    column->addLayout(buttons);
    resize(QSize(820, 560).boundedTo(screen()->availableSize() - QSize(16, 40)));
    m_urunform.yukle();
    m_view->setCurrentIndex(m_urunform.l1.index(0, Urunform::Kod));
    connect(&m_urunform.l1, &Grid::dataChanged, this, [this] {
        m_changed = true;
        tell({});
    });
}

PriceView *UrunWindow::makeView()
{
    auto *view = new PriceView(m_urunform.l1, u"l1"_s);
    view->setAccessibleName(u"Ürünler"_s);
    view->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setShowGrid(true);
    view->setTabKeyNavigation(true);
    view->setColumnHidden(Urunform::Sira, true);
    view->verticalHeader()->show();
    view->findChild<QAbstractButton *>()->setAccessibleName(u"Tümünü Seç"_s); // in the corner
    view->horizontalHeader()->setSectionResizeMode(Urunform::Ack, QHeaderView::Stretch);
    for (const int column : {Urunform::Fiyat, Urunform::Bfiyat})
        view->setItemDelegateForColumn(column, new PriceDelegate(view));
    view->installEventFilter(this);
    connect(view, &PriceView::refused, m_note, [this](const QString &text) {
        tell(u"\"%1\" açık bir fiyat değil: 1.234,50, 1234 ya da 12,5 gibi yazın."_s.arg(text));
    });
    connect(view, &PriceView::left, m_note, [this] { tell({}); });
    return view;
}

// One Esc too many behind an editor must not lose what was typed.
void UrunWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && m_changed)
        tell(u"Kaydedilmemiş değişiklik var: \"Kaydet\" (Ctrl+S) ya da \"Kapat\" (Ctrl+W)."_s);
    else
        QDialog::keyPressEvent(event);
}

void UrunWindow::tell(const QString &text)
{
    m_note->setText(text);
    announce(m_note, text);
}

void UrunWindow::save()
{
    setFocus(); // ends the editing of a cell
    if (!findChild<PriceView *>()->holdsRefused() && m_urunform.kaydet())
        accept();
}

// The arrow goes on to the view, which then moves to the row that was added.
void UrunWindow::goTo(const QString &kod)
{
    m_view->setCurrentIndex(m_urunform.l1.index(m_urunform.satirbul(kod), Urunform::Bfiyat));
    m_view->setFocus();
}

bool UrunWindow::eventFilter(QObject *watched, QEvent *event)
{
    auto *view = qobject_cast<PriceView *>(watched);
    if (!view || event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const QModelIndex at = view->currentIndex();
    auto *key = static_cast<QKeyEvent *>(event);
    if (key->matches(QKeySequence::Paste) && at.isValid()) {
        const QString block = QGuiApplication::clipboard()->text();
        tell(m_urunform.yapistir(at.row(), at.column(), block));
        return true;
    }
    if (key->key() == Qt::Key_Down)
        m_urunform.satirekle(at.row());
    return QDialog::eventFilter(watched, event);
}

} // namespace kervan
