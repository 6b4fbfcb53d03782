#pragma once

#include "base/fields.h"

#include <QObject>
#include <QString>

class QFrame;
class QLabel;
class QPushButton;
class QStatusBar;
class QWidget;

namespace kervan {

class GridView;
class TitleStrip;

// The pieces that both card windows are made of.

/// The strip `bar1` with its title `bart` in the middle.
TitleStrip *titleStrip(const QString &title);

/// A command of the window: a button, and the keys that press it anywhere on the window.
QPushButton *commandButton(QWidget *window, const QString &name, const QString &caption,
                           const QString &pictureName, const QString &keys);

/// Shows a text that can be selected and copied.
QLabel *valueLabel(const QString &name, TextField &field);

/// The frame `f2` around the list.
QFrame *cardFrame(GridView *view);

/// The status bar `sb1`: a caption and the number of cards, then what failed, and the progress bar.
QStatusBar *cardStatusBar(const QString &countCaption, TextField &count, TextField &bilgi,
                          ProgressField &progress);

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

} // namespace kervan
