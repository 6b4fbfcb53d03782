#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace kervan {

/// Presses a button by its name; gives its caption.
inline QString press(QWidget &window, const QString &name)
{
    auto *button = window.findChild<QAbstractButton *>(name);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    return button->text();
}

/// Types over what a field holds, and Enter.
inline void type(QWidget &window, const QString &name, const QString &text)
{
    auto *edit = window.findChild<QLineEdit *>(name);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClicks(edit, text);
    QTest::keyClick(edit, Qt::Key_Return);
}

inline bool isDropTaken(const QWidget &window)
{
    return std::ranges::none_of(window.findChildren<QTimer *>(QStringLiteral("birakilan")),
                                &QTimer::isActive);
}

/// What was dropped on the window is taken behind the drop.
inline void endDrop(const QWidget &window)
{
    QTRY_VERIFY(isDropTaken(window));
}

/// Lets a file fall on the window.
inline void drop(QWidget &window, const QString &path)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton,
                    Qt::ShiftModifier);
    QApplication::sendEvent(&window, &drop);
    if (drop.isAccepted()) {
        QVERIFY(drop.dropAction() == Qt::CopyAction); // moved, its sender would delete it
        QVERIFY(!isDropTaken(window));                // its sender waits for the event
    }
    endDrop(window);
}

} // namespace kervan
