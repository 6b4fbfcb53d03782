#include "controls/binding.h"

#include "controls/dateedit.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QTimer>

#include <memory>

namespace kervan {

namespace {

constexpr qint64 millisecondsBetweenRepaints = 40;

// Tells the widget now and at each change.
template<class Field, class Show>
void follow(QWidget *widget, Field &field, Show show)
{
    show();
    QObject::connect(&field, &Field::changed, widget, show);
}

// Turning the wheel over a control that the user is not at scrolls past it and changes nothing.
class WheelGuard : public QObject
{
public:
    explicit WheelGuard(QWidget *widget)
        : QObject(widget)
    {
        widget->setFocusPolicy(Qt::StrongFocus);
        widget->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus())
            return false;
        event->ignore();
        return true;
    }
};

void followFocus(QWidget *widget, TextField &field)
{
    QObject::connect(&field, &TextField::focusWanted, widget, [widget] { widget->setFocus(); });
}

// A pasted text may bring line ends, which no field of one line means and a side file would take
// for the next value's place.
QString inOneLine(QString text)
{
    return text.remove(u'\n').remove(u'\r');
}

} // namespace

void bind(QLabel *label, TextField &field)
{
    label->setTextFormat(Qt::PlainText);
    follow(label, field, [label, &field] { label->setText(field.text()); });
}

void bind(QLineEdit *edit, TextField &field)
{
    follow(edit, field, [edit, &field] {
        if (edit->text() != field.text())
            edit->setText(field.text());
    });
    followFocus(edit, field);
    QObject::connect(edit, &QLineEdit::textChanged, &field, [edit, &field](const QString &text) {
        field.setText(inOneLine(text));
        if (edit->text() != field.text())
            edit->setText(field.text());
    });
}

void bind(QComboBox *box, ChoiceField &field)
{
    const auto show = [box, &field] {
        if (!box->isEditable())
            box->setCurrentIndex(
                box->findText(field.text(), Qt::MatchExactly | Qt::MatchCaseSensitive));
        else if (box->currentText() != field.text()) // the cursor stays where the user types
            box->setEditText(field.text());
    };
    const auto fill = [box, &field, show] {
        const QSignalBlocker quiet(box);
        box->clear();
        box->addItems(field.entries());
        show();
    };
    fill();
    new WheelGuard(box);
    QObject::connect(&field, &ChoiceField::entriesChanged, box, fill);
    QObject::connect(&field, &ChoiceField::changed, box, show);
    followFocus(box, field);
    QObject::connect(&field, &ChoiceField::dropWanted, box, [box] {
        box->setFocus();
        box->showPopup();
        // The list has a current row in any case; one that doesn't show would be chosen unseen.
        if (box->currentIndex() < 0)
            box->view()->setCurrentIndex(box->model()->index(0, box->modelColumn()));
    });
    QObject::connect(box, &QComboBox::activated, &field,
                     [box, &field](int index) { field.setText(box->itemText(index)); });
    if (!box->isEditable())
        return;
    box->setInsertPolicy(QComboBox::NoInsert);
    QObject::connect(box, &QComboBox::editTextChanged, &field, [box, &field](const QString &text) {
        field.setText(inOneLine(text));
        if (box->currentText() != field.text())
            box->setEditText(field.text());
    });
}

void bind(QCheckBox *box, CheckField &field)
{
    follow(box, field, [box, &field] { box->setChecked(field.isChecked()); });
    QObject::connect(box, &QCheckBox::toggled, &field, &CheckField::setChecked);
}

void bind(DateEdit *edit, DateField &field)
{
    follow(edit, field, [edit, &field] { edit->setDate(field.date()); });
    QObject::connect(edit, &DateEdit::dateChanged, &field, &DateField::setDate);
}

void bind(QProgressBar *bar, ProgressField &field)
{
    const auto sinceRepaint = std::make_shared<QElapsedTimer>();
    sinceRepaint->start();
    const auto show = [bar, &field] {
        bar->setVisible(field.isShown());
        bar->setMaximum(qMax(field.maximum(), 1));
        bar->setValue(field.value());
    };
    // Shows the last of the steps that were passed by, once the work lets it.
    auto *last = new QTimer(bar);
    last->setSingleShot(true);
    QObject::connect(last, &QTimer::timeout, bar, show);
    follow(bar, field, [bar, &field, sinceRepaint, show, last] {
        const bool turns = bar->isVisibleTo(bar->parentWidget()) != field.isShown();
        // A bar that followed each of a hundred thousand steps would take longer than the steps.
        if (!turns && sinceRepaint->elapsed() < millisecondsBetweenRepaints) {
            if (!last->isActive())
                last->start();
            return;
        }
        sinceRepaint->restart();
        show();
        bar->repaint();
    });
}

void bindHourglass(QWidget *window, CheckField &field)
{
    QObject::connect(&field, &CheckField::changed, window, [&field] {
        if (field.isChecked())
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        else
            QGuiApplication::restoreOverrideCursor();
    });
}

} // namespace kervan
