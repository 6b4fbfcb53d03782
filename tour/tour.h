#pragma once

#include "frame/mainwindow.h"

#include <QImage>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace kervan {

/// A visitor of the program's windows: clicks, types and chooses as a user does, takes pictures,
/// and answers the boxes and file dialogs that come up. Whatever it does not find or expect ends
/// the tour.
class Tour
{
public:
    /// Pictures are drawn in any case.
    enum class Pictures { Kept, Dropped };

    /// `folder` is the program's; the pictures go there too.
    Tour(MainWindow &window, const QString &folder, Pictures pictures = Pictures::Kept);

    template<class Widget>
    Widget *find(QWidget *inside, const char *name)
    {
        auto *found = inside->findChild<Widget *>(QString::fromUtf8(name));
        if (!found)
            qFatal("the tour finds no %s", name);
        return found;
    }
    MainWindow &window() { return m_window; }
    const QString &folder() const { return m_folder; }
    QWidget *screen(const char *name) { return find<QWidget>(&m_window, name); }
    void click(QWidget *inside, const char *name);
    /// Triggers an entry of the menus.
    void choose(const char *action);
    /// Chooses an entry of a list by keys, as a user at the keyboard does.
    void choose(QWidget *inside, const char *list, int entry);
    void clickRow(QWidget *inside, const char *view, int row, int column);
    /// Replaces the text of a line.
    void type(QWidget *inside, const char *edit, const QString &text);
    void picture(QWidget *widget, const QString &name);
    void picture(const QString &name) { picture(&m_window, name); }
    /// A control of a picture of the guide that its text speaks of; it gets the next number.
    struct Spot
    {
        QWidget *inside;
        const char *name;
    };
    /// A picture for the guide, with the numbers drawn onto it; of the part that the area names,
    /// if it does.
    void guidePicture(QWidget *widget, const QString &name, const QList<Spot> &spots = {},
                      const QRect &area = {});
    /// What the next file dialog is answered with.
    void nextFile(const QString &path) { m_nextFile = path; }
    const QStringList &made() const { return m_made; }

private:
    void answerModal();
    QImage shot(QWidget *widget, const QList<Spot> &spots);

    MainWindow &m_window;
    QString m_folder;
    Pictures m_pictures;
    QTimer m_answers;
    QString m_nextFile;
    QStringList m_made;
    int m_count = 0;
};

} // namespace kervan
