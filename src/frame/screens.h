#pragma once

#include <QStringView>

#include <span>

class QWidget;

namespace kervan {

class MainWindow;

/// A screen that the frame can open.
struct Screen
{
    enum Kind {
        Transfer, ///< a child of the frame
        Modal,    ///< a dialog that blocks the frame
        Beside    ///< a dialog that does not
    };

    QStringView word;
    Kind kind;
    QStringView guide; ///< the anchor of its page in the user guide
    /// Makes its window, a QDialog unless it is a transfer, and ties to the frame what happens when
    /// it is saved or closed.
    QWidget *(*make)(MainWindow &frame, QStringView word);
    /// What its opening does behind the first show, if that may take a while.
    void (*load)(QWidget *window) = nullptr;
};

std::span<const Screen> allScreens();

/// The screen of a word, or null.
const Screen *screenOf(QStringView word);

} // namespace kervan
