#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>

class QDropEvent;

namespace kervan {

class BigButton;
class ButtonBand;
class MainWindow;

/// Takes a file that is dropped on the frame itself to the transfer that it fits. Where several
/// fit, their big buttons light up, and the one that is clicked or dropped on gets it; Esc or a
/// click elsewhere ends that. It blocks nothing.
class DropGuide : public QObject
{
    Q_OBJECT

public:
    DropGuide(MainWindow &frame, ButtonBand &band);

    /// The file that waits for its screen is to be opened there; false if none waits or it does
    /// not fit.
    bool bringTo(QStringView screen);
    bool isWaiting() const { return !m_file.isEmpty(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void enter(QDropEvent &event);
    void move(QDropEvent &event);
    void drop(QDropEvent &event);
    /// Opens the first of the files in the screen that was meant, or in the one that it fits.
    void take(const QStringList &files, const QString &meant);
    /// The screen of the big button at this place of the frame, or an empty text.
    QString screenAt(const QPoint &place) const;
    QStringList screensOf(const QString &path) const;
    void wait(const QString &path, const QStringList &screens, const QString &several);
    void tell(const QString &text);
    void end();
    void open(const QString &screen, const QString &path);
    void light(const QStringList &screens);

    MainWindow &m_frame;
    ButtonBand &m_band;
    QStringList m_dragged; // screens that the dragged file may be meant for
    QString m_file;        // waits for its screen
    QStringList m_screens; // that may have it
};

} // namespace kervan
