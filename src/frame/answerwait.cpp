#include "frame/answerwait.h"

#include "check/beside.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>

namespace kervan {

namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr auto betweenLooks = Milliseconds(20);

// Sockets bring nothing that would be for the windows.
void letEventsIn()
{
    QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
}

} // namespace

AnswerWait::AnswerWait(QWidget *screen)
    : m_screen(screen)
{
    qApp->installEventFilter(this); // in front of all others
}

AnswerWait::~AnswerWait()
{
    qApp->removeEventFilter(this);
    for (const Held &held : m_held) {
        if (held.receiver)
            QCoreApplication::postEvent(held.receiver, held.event->clone());
    }
    for (const QPointer<Beside> &beside : std::as_const(m_ended)) {
        if (beside)
            Q_EMIT beside->ended();
    }
}

bool AnswerWait::until(const std::function<bool(Milliseconds)> &hasCome)
{
    // What waits was meant for what was there before the strip.
    letEventsIn();
    m_strip = std::make_unique<WaitStrip>(m_screen);
    connect(m_strip->button(), &QAbstractButton::clicked, this, [this] { m_isGivenUp = true; });
    const QCursor *shown = QApplication::overrideCursor();
    const bool wasBusy = shown && shown->shape() == Qt::WaitCursor;
    if (wasBusy)
        QApplication::changeOverrideCursor(Qt::BusyCursor); // there is something to click
    QElapsedTimer time;
    time.start();
    bool isThere = false;
    while (!m_isGivenUp && !(isThere = hasCome(betweenLooks))) {
        m_strip->showTime(int(time.elapsed() / 1000));
        letEventsIn();
    }
    if (wasBusy)
        QApplication::changeOverrideCursor(Qt::WaitCursor);
    m_strip.reset();
    return isThere;
}

// Taken from the window, in front of all that a click does elsewhere: the focus stays where it is.
void AnswerWait::takeMouse(const QObject *watched, const QEvent &event)
{
    if (!m_strip || watched != m_strip->window()->windowHandle())
        return;
    QPushButton *button = m_strip->button();
    const auto &mouse = static_cast<const QMouseEvent &>(event);
    const bool isOver = button->window()->childAt(mouse.position().toPoint()) == button;
    if (event.type() == QEvent::MouseButtonRelease) {
        m_isGivenUp = m_isGivenUp || (isOver && button->isDown());
        button->setDown(false);
    } else if (event.type() != QEvent::MouseMove && mouse.button() == Qt::LeftButton) {
        button->setDown(isOver);
    }
}

// Nothing of it goes on to shortcuts.
void AnswerWait::takeKey(QEvent &event)
{
    const auto &key = static_cast<const QKeyEvent &>(event);
    if (m_strip && event.type() == QEvent::KeyPress && WaitStrip::isKey(key.key(), key.modifiers()))
        m_isGivenUp = true;
    event.accept();
}

void AnswerWait::hold(QObject *receiver, const QEvent &event)
{
    m_held.push_back({receiver, std::unique_ptr<QEvent>(event.clone())});
}

bool AnswerWait::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        takeKey(*event);
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        takeMouse(watched, *event);
        return true;
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
        return true;
    case QEvent::TouchBegin: // a click is made of it where nobody takes it
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::DragLeave:
    case QEvent::Drop:
    case QEvent::Close:
        event->ignore();
        return true;
    case QEvent::Timer: // comes again, as long as nobody has taken it
        // A window paints by one, and a reader for the blind presses a button by one.
        return !watched->isWindowType() && !(m_strip && watched == m_strip->button());
    case QEvent::FocusIn: // leaving a field may take over what was typed into it
    case QEvent::FocusOut:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
        if (!watched->isWidgetType())
            return false;
        hold(watched, *event);
        return true;
    case QEvent::MetaCall:
        if (auto *beside = qobject_cast<Beside *>(watched)) {
            m_ended << beside;
            return true;
        }
        return false;
    default:
        return false;
    }
}

} // namespace kervan
