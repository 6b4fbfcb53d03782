#include "frame/answerwait.h"

#include "check/beside.h"

#include <QAbstractEventDispatcher>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QScopeGuard>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace kervan {

namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr auto betweenLooks = Milliseconds(20);
// A list that is painted at each look must not make a long reading much longer.
constexpr int shareOfLooks = 4;

} // namespace

AnswerWait::AnswerWait(std::function<QWidget *()> screen, Milliseconds silence)
    : m_screen(std::move(screen))
    , m_silence(silence)
{
    const auto *loop = QAbstractEventDispatcher::instance();
    connect(loop, &QAbstractEventDispatcher::awake, this, &AnswerWait::reachLoop);
    connect(loop, &QAbstractEventDispatcher::aboutToBlock, this, &AnswerWait::reachLoop);
    connect(this, &AnswerWait::over, this, &AnswerWait::end, Qt::QueuedConnection);
}

AnswerWait::~AnswerWait()
{
    delete m_strip;
}

bool AnswerWait::until(const std::function<bool(Milliseconds)> &hasCome)
{
    if (m_isLooking || m_isGivenUp) // a reader for the blind presses past every filter of events
        return false;
    if (m_state == State::Unseen) {
        if (isShortEnough(hasCome))
            return true;
        QWidget *screen = m_screen();
        if (!screen) {
            while (!hasCome(std::chrono::hours(1))) {
            }
            return true;
        }
        begin(screen);
    }
    m_state = State::Seen;
    while (!m_isGivenUp) {
        const auto left = m_untilNext - Milliseconds(m_looked.elapsed());
        const bool isThere = hasCome(std::max(left, Milliseconds(0)));
        if (isThere && !m_looked.hasExpired(m_untilNext.count()))
            return true;
        look();
        if (isThere && !m_isGivenUp)
            return true;
    }
    return false;
}

// Answers that are quick, but many, make one long silence.
bool AnswerWait::isShortEnough(const std::function<bool(Milliseconds)> &hasCome)
{
    const auto begun = std::chrono::steady_clock::now();
    const auto left = std::chrono::ceil<Milliseconds>(m_silence - m_waited);
    const bool isThere = hasCome(std::max(left, Milliseconds(0)));
    m_waited += std::chrono::steady_clock::now() - begun;
    return isThere;
}

void AnswerWait::begin(QWidget *screen)
{
    m_state = State::Seen;
    m_seen.start();
    qApp->installEventFilter(this); // in front of all others
    look();                         // what waits was meant for what was there before the strip
    m_strip = new WaitStrip(screen);
    connect(m_strip->button(), &QAbstractButton::clicked, this, [this] { m_isGivenUp = true; });
    const QCursor *shown = QApplication::overrideCursor();
    if (shown && shown->shape() == Qt::WaitCursor)
        QApplication::changeOverrideCursor(Qt::BusyCursor); // there is something to click
}

void AnswerWait::look()
{
    const auto waited = m_waited + Milliseconds(m_seen.elapsed());
    if (m_strip)
        m_strip->showTime(int(std::chrono::floor<std::chrono::seconds>(waited).count()));
    m_looked.start();
    letEventsIn();
    m_untilNext = std::max(betweenLooks, shareOfLooks * Milliseconds(m_looked.restart()));
}

// Sockets bring nothing that would be for the windows. What a first pass fetches from the desktop,
// a second one may have to hand out.
void AnswerWait::letEventsIn()
{
    m_isLooking = true;
    const auto end = qScopeGuard([this] { m_isLooking = false; });
    for (int pass = 0; pass < 2; ++pass)
        QCoreApplication::processEvents(QEventLoop::ExcludeSocketNotifiers);
}

void AnswerWait::reachLoop()
{
    if (m_isLooking)
        return;
    m_waited = {};
    if (m_state != State::Seen)
        return;
    m_state = State::Over;
    Q_EMIT over();
}

// A last click on the strip must not reach what lies under it.
void AnswerWait::end()
{
    if (m_state != State::Over || m_isLooking)
        return;
    letEventsIn();
    qApp->removeEventFilter(this);
    delete m_strip;
    const QCursor *shown = QApplication::overrideCursor();
    if (shown && shown->shape() == Qt::BusyCursor)
        QApplication::changeOverrideCursor(Qt::WaitCursor); // a box in the midst of the step
    m_state = State::Unseen;
    m_isGivenUp = false;
    for (const Held &held : std::exchange(m_held, {})) {
        const bool isPast =
            held.event->type() == QEvent::FocusIn && held.receiver != QApplication::focusWidget();
        if (held.receiver && !isPast) // the step may have led the focus elsewhere
            QCoreApplication::postEvent(held.receiver, held.event->clone());
    }
    for (const QPointer<Beside> &beside : std::exchange(m_ended, {})) {
        if (beside)
            Q_EMIT beside->ended();
    }
}

// Taken from the window, in front of all that a click does elsewhere: the focus stays where it is.
void AnswerWait::takeMouse(const QObject *watched, const QEvent &event)
{
    if (!m_strip || watched != m_strip->window()->windowHandle())
        return;
    QPushButton *button = m_strip->button();
    const auto &mouse = static_cast<const QMouseEvent &>(event);
    const bool isOver = button->window()->childAt(mouse.position().toPoint()) == button;
    if (event.type() != QEvent::MouseMove && mouse.button() != Qt::LeftButton)
        return;
    if (event.type() == QEvent::MouseButtonRelease) {
        m_isGivenUp = m_isGivenUp || (isOver && button->isDown());
        button->setDown(false);
    } else if (event.type() != QEvent::MouseMove) {
        button->setDown(isOver);
    }
}

// Nothing of it goes on to shortcuts. Who knows the key does not wait for the strip.
void AnswerWait::takeKey(QEvent &event)
{
    const auto &key = static_cast<const QKeyEvent &>(event);
    if (event.type() == QEvent::KeyPress && WaitStrip::isKey(key.key(), key.modifiers()))
        m_isGivenUp = true;
    event.accept();
}

void AnswerWait::hold(QObject *receiver, const QEvent &event)
{
    m_held.push_back({receiver, std::unique_ptr<QEvent>(event.clone())});
}

bool AnswerWait::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_isLooking && m_state != State::Over)
        return false;
    if (QApplication::activeModalWidget()) // came past every filter, and keeps the screens as they
                                           // are
        return false;
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
        // A window paints by one, a reader for the blind presses a button by one, and the loop
        // hands on others' that way.
        return !watched->isWindowType() && !(m_strip && watched == m_strip->button()) &&
               !qobject_cast<QAbstractEventDispatcher *>(watched);
    case QEvent::Show: // a window that comes back makes its screens look at their folders
    case QEvent::Hide:
        if (!watched->isWidgetType() || !event->spontaneous())
            return false;
        hold(watched, *event);
        return true;
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
        return qobject_cast<QAction *>(watched); // from a desktop that shows the menu bar itself
    default:
        return false;
    }
}

} // namespace kervan
