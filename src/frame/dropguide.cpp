#include "frame/dropguide.h"

#include "controls/announcing.h"
#include "controls/bigbutton.h"
#include "controls/transferwidgets.h"
#include "frame/entries.h"
#include "frame/fitting.h"
#include "frame/mainwindow.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QStatusBar>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QStringList filesOf(const QDropEvent &event)
{
    QStringList files;
    for (const QUrl &url : event.mimeData()->urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

} // namespace

DropGuide::DropGuide(MainWindow &frame, ButtonBand &band)
    : QObject(&frame)
    , m_frame(frame)
    , m_band(band)
{
    frame.setAcceptDrops(true);
    qApp->installEventFilter(this); // for Esc and clicks, wherever they go
}

bool DropGuide::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == &m_frame) {
        switch (event->type()) {
        case QEvent::DragEnter:
            enter(*static_cast<QDropEvent *>(event));
            return true;
        case QEvent::DragMove:
            move(*static_cast<QDropEvent *>(event));
            return true;
        case QEvent::Drop:
            drop(*static_cast<QDropEvent *>(event));
            return true;
        case QEvent::DragLeave:
            light(m_screens);
            return true;
        default:
            break;
        }
    }
    if (!isWaiting() || !watched->isWidgetType())
        return false;
    if (event->type() == QEvent::ShortcutOverride &&
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        end();
        event->accept(); // and no screen closes by it
        return true;
    }
    if (event->type() == QEvent::MouseButtonPress && !qobject_cast<BigButton *>(watched) &&
        !qobject_cast<QMenu *>(watched) && !qobject_cast<QMenuBar *>(watched))
        end();
    return false;
}

void DropGuide::enter(QDropEvent &event)
{
    // A box in front waits for its answer, and a step behind it for its end.
    const QStringList files = m_frame.isAtWork() ? QStringList() : filesOf(event);
    m_dragged = files.isEmpty() ? QStringList() : screensAtAGlance(files.first());
    light(m_dragged);
    m_dragged.isEmpty() ? event.ignore() : acceptCopy(event);
}

// A button that the file is not for refuses it.
void DropGuide::move(QDropEvent &event)
{
    const QString screen = screenAt(event.position().toPoint());
    const bool isFit = !m_dragged.isEmpty() && (screen.isEmpty() || m_dragged.contains(screen));
    isFit ? acceptCopy(event) : event.ignore();
}

void DropGuide::drop(QDropEvent &event)
{
    const QStringList files = m_frame.isAtWork() ? QStringList() : filesOf(event);
    files.isEmpty() ? event.ignore() : acceptCopy(event);
    end();
    if (files.isEmpty())
        return;
    const QString meant = screenAt(event.position().toPoint());
    takeBehindDrop(
        this, [this, files, meant] { take(files, meant); }, [this] { return !m_frame.isAtWork(); });
}

void DropGuide::take(const QStringList &files, const QString &meant)
{
    end(); // of one that was dropped in between
    const QString &path = files.first();
    const QStringList screens = meant.isEmpty() ? screensOf(path) : QStringList{meant};
    const QString several = files.size() > 1
                                ? u"%1 dosya bırakıldı, yalnız ilki alındı: %2"_s.arg(files.size())
                                      .arg(QFileInfo(path).fileName())
                                : QString();
    if (screens.isEmpty()) {
        tell(u"%1 hiçbir aktarımın okuduğu türden değil."_s.arg(QFileInfo(path).fileName()));
    } else if (screens.size() == 1) {
        open(screens.first(), path);
        if (auto *screen = m_frame.findChild<QWidget *>(screens.first());
            screen && !several.isEmpty())
            tellBelow(screen, several);
    } else {
        wait(path, screens, several);
    }
}

// A workbook is read for it, which may take a moment.
QStringList DropGuide::screensOf(const QString &path) const
{
    const auto work = m_frame.program().busy.reading(path);
    return screensFor(path);
}

QString DropGuide::screenAt(const QPoint &place) const
{
    for (int i = 0; i < m_band.buttons().size(); ++i) {
        const BigButton *button = m_band.buttons()[i];
        if (button->rect().contains(button->mapFrom(&m_frame, place)))
            return bigButtons()[i].screen;
    }
    return {};
}

void DropGuide::wait(const QString &path, const QStringList &screens, const QString &several)
{
    m_file = path;
    m_screens = screens;
    light(screens);
    QString text = u"%1 birkaç aktarıma uyuyor: yanan düğmelerden birine tıklayın ya da dosyayı "
                   "onun üstüne bırakın; Esc vazgeçer."_s.arg(QFileInfo(path).fileName());
    if (screens.contains(u"cafis"))
        text += u" Cari fişler için Aktarım menüsü."_s;
    tell(several.isEmpty() ? text : several + u". "_s + text);
}

// The frame's own bar stands only while it tells something.
void DropGuide::tell(const QString &text)
{
    m_frame.statusBar()->show();
    m_frame.statusBar()->showMessage(text);
    announce(&m_frame, text);
}

void DropGuide::end()
{
    if (isWaiting())
        m_frame.statusBar()->hide();
    m_file.clear();
    m_screens.clear();
    light({});
}

bool DropGuide::bringTo(QStringView screen)
{
    if (!m_screens.contains(screen.toString()))
        return false;
    const QString path = m_file;
    end();
    open(screen.toString(), path);
    return true;
}

// As if it were dropped on the screen.
void DropGuide::open(const QString &screen, const QString &path)
{
    m_frame.open(screen);
    auto *window = m_frame.findChild<QWidget *>(screen);
    if (auto *drop = window ? window->findChild<FileDrop *>() : nullptr)
        Q_EMIT drop->dropped(path);
}

void DropGuide::light(const QStringList &screens)
{
    for (int i = 0; i < m_band.buttons().size(); ++i)
        m_band.buttons()[i]->setLit(screens.contains(bigButtons()[i].screen));
}

} // namespace kervan
