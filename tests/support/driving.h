#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>

namespace kervan {

/// Presses a button by its name; gives its caption.
inline QString press(QWidget &window, const QString &name)
{
    auto *button = window.findChild<QAbstractButton *>(name);
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
    return button->text();
}

/// Lets a file fall on the window.
inline void drop(QWidget &window, const QString &path)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDropEvent drop({10, 10}, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
}

} // namespace kervan
