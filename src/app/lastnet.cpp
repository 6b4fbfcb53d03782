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
    if (QThread::currentThread() != thread())
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

void NettedApplication::told(const QObject *receiver, const QString &what)
{
    if (!m_tell)
        return;
    const QString caption = captionOf(receiver);
    m_tell((caption.isEmpty()
                ? u"Beklenmeyen bir hata oldu: %1."_s.arg(what)
                : u"\"%1\" yarıda kaldı, beklenmeyen bir hata oldu: %2."_s.arg(caption, what)) +
           u" Program çalışıyor; son işin sonucuna bakıp yeniden deneyin."_s);
}

} // namespace kervan
