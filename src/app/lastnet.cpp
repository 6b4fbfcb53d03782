#include "app/lastnet.h"

#include "base/failure.h"

#include <QAbstractButton>
#include <QAction>
#include <QThread>

#include <exception>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// What the user has set off, by its caption; empty where it has none.
QString captionOf(const QObject *receiver)
{
    QString caption;
    if (const auto *button = qobject_cast<const QAbstractButton *>(receiver))
        caption = button->text().isEmpty() ? button->accessibleName() : button->text();
    else if (const auto *action = qobject_cast<const QAction *>(receiver))
        caption = action->text();
    else if (const auto *widget = qobject_cast<const QWidget *>(receiver))
        caption =
            widget->accessibleName().isEmpty() ? widget->windowTitle() : widget->accessibleName();
    return caption.remove(u'&').simplified();
}

} // namespace

// Events of other threads are not its own: a fault there is a crash, and leaves its report.
bool NettedApplication::notify(QObject *receiver, QEvent *event)
{
    if (QThread::currentThread() != thread() || !m_tell)
        return QApplication::notify(receiver, event);
    try {
        return QApplication::notify(receiver, event);
    } catch (const Failure &failure) {
        told(receiver, failure.description());
    } catch (const std::exception &fault) {
        told(receiver, QString::fromLocal8Bit(fault.what()));
    } catch (...) {
        told(receiver, u"nedeni bilinmiyor"_s);
    }
    return true;
}

// What fails at the telling itself, without memory above all, goes untold.
void NettedApplication::told(const QObject *receiver, const QString &what) const noexcept
{
    try {
        const QString caption = captionOf(receiver);
        const QString reason = what.endsWith(u'.') ? what.chopped(1) : what;
        m_tell((caption.isEmpty() ? u"Beklenmeyen bir hata oldu: %1."_s.arg(reason)
                                  : u"\"%1\" yarıda kaldı, beklenmeyen bir hata oldu: %2."_s.arg(
                                        caption, reason)) +
               u" Program çalışıyor; son işin sonucuna bakıp yeniden deneyin."_s);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace kervan
