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

/// What was dropped on the window is taken behind the drop.
inline void endDrop(QWidget &window)
{
    const auto isTaken = [&] {
        return std::ranges::none_of(window.findChildren<QTimer *>(QStringLiteral("birakilan")),
                                    &QTimer::isActive);
    };
    QTRY_VERIFY(isTaken());
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
    endDrop(window);
}

} // namespace kervan
