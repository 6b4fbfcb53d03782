#pragma once

#include "base/notes.h"
#include "controls/titlestrip.h"

#include <QList>
#include <QMargins>
#include <QObject>
#include <QShortcut>
#include <QString>
#include <QToolButton>

#include <functional>

class QDropEvent;
class QFrame;
class QLabel;
class QPushButton;
class QScrollArea;
class QStatusBar;
class QWidget;

namespace kervan {

class GridView;

// The pieces that the windows of the transfers are made of.

constexpr QMargins screenMargins(6, 2, 6, 0);
constexpr int screenSpacing = 3;

/// The strip `bar1` with its title `bart` in the middle.
TitleStrip *titleStrip(const QString &title);

/// A command of the window: a button, and the keys that press it anywhere on the window.
QPushButton *commandButton(QWidget *window, const QString &name, const QString &caption,
                           const QString &pictureName, const QString &keys);

/// Shows a text that can be selected and copied. Those who do not see it read it with the caption,
/// and are told when it changes, unless that is `often`.
enum class Changes { Seldom, Often };
QLabel *valueLabel(const QString &name, const QString &caption, TextField &field,
                   Changes changes = Changes::Seldom);

/// The label of a control, which it names for those who do not see it, if nothing else has.
QLabel *labelFor(QWidget *buddy, const QString &text);

/// The frame `f2` around a list without a caption.
QFrame *plainFrame(GridView *view);

/// The status bar `sb1`: a caption and the number of rows, the file that the screen holds where no
/// caption shows it, and the progress bar.
QStatusBar *transferStatusBar(const QString &countCaption, TextField &count, Notes &notes,
                              ProgressField &progress);

/// While a list, menu or calendar is dropped down, Esc is its own key and no shortcut of a window.
class DropDownFirst : public QObject
{
public:
    explicit DropDownFirst(QWidget *window);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// Lets the hands stay on the keys: F6 and Shift+F6 go from pane to pane of the window, a list or a
/// panel of its layout, and a read that began at its list or a button leads to the first row.
void leadThroughPanes(QWidget *window);

/// What every transfer lets its user do with its lists `l1` and `l2`: Ctrl+F, F3, Ctrl+Z. The
/// window has its parts in a column, the status bar among them.
void addListTools(QWidget *window);

/// Tells something passing in the status bar of the window, and to those who do not see it.
void tellBelow(const QWidget *window, const QString &text);

/// Carries out a command that may read a source. If the list was filled anew by it, the keys are
/// the list's from then on, wherever they were: at a choice, the next arrow would change it.
void readIntoList(QWidget *window, const std::function<void()> &command);

/// The button of the strip and Esc, anywhere on the window, ask for its closing.
template<class Window>
void letClose(Window *window, TitleStrip *strip)
{
    auto *escape = new QShortcut(Qt::Key_Escape, window);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    new DropDownFirst(window);
    QObject::connect(escape, &QShortcut::activated, window, &Window::closeWanted);
    QObject::connect(strip->closeButton(), &QAbstractButton::clicked, window, &Window::closeWanted);
}

/// Takes a file that is dropped on the window.
class FileDrop : public QObject
{
    Q_OBJECT

public:
    explicit FileDrop(QWidget *window);

Q_SIGNALS:
    void dropped(const QString &path);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

/// Takes a drag as one that copies. A dragged file that is taken as moved, as Shift asks for, would
/// be deleted by the program it comes from.
void acceptCopy(QDropEvent &event);

/// Takes what was dropped once the program it comes from is free again: that waits for the end of
/// the drop, and not for a file to be read. A box that stands by then is waited for, and whatever
/// else `isFree` says; nothing is taken if the owner has gone.
void takeBehindDrop(
    QObject *owner, std::function<void()> take, std::function<bool()> isFree = [] { return true; });

/// What the window of a transfer is made of, from top to bottom, and where work starts on it.
struct TransferParts
{
    TitleStrip *strip;
    Notes *notes;            ///< stand below the strip
    QList<QWidget *> panels; ///< the last one takes the room that there is
    QStatusBar *statusBar;
    QString firstButton;                               ///< has the focus
    std::function<void(const QString &path)> openFile; ///< does so with a file that is dropped
};

/// The panels of a screen under each other, the last one with the room that there is.
QScrollArea *scroller(const QList<QWidget *> &panels);

/// Puts the parts into the window.
void layOutParts(QWidget *window, const TransferParts &parts);

/// Makes a window that holds these parts, closes and takes a file as every transfer window does.
template<class Window>
void layOutTransfer(Window *window, const TransferParts &parts)
{
    layOutParts(window, parts);
    letClose(window, parts.strip);
}

} // namespace kervan
