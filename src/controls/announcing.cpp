#include "controls/announcing.h"

#include "base/fields.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView voiceName = u"duyuru";

// A reader speaks a notification when it is shown, and the name of nothing else that changes.
QAccessibleInterface *notification(const QString &, QObject *object)
{
    return object->objectName() == voiceName
               ? new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Notification)
               : nullptr;
}

// Stands in each window that has told something, and shows nothing.
QWidget *voiceOf(QWidget *window)
{
    if (auto *voice =
            window->findChild<QWidget *>(voiceName.toString(), Qt::FindDirectChildrenOnly))
        return voice;
    QAccessible::installFactory(&notification); // once: it keeps each only once
    auto *voice = new QWidget(window);
    voice->setObjectName(voiceName.toString());
    voice->setAttribute(Qt::WA_TransparentForMouseEvents);
    voice->setGeometry(0, 0, 1, 1);
    return voice;
}

} // namespace

void announce(const QWidget *by, const QString &text)
{
    if (!by->isVisible() || text.isEmpty())
        return;
    QWidget *modal = QApplication::activeModalWidget();
    QWidget *voice = voiceOf(modal ? modal : by->window());
    voice->hide();
    voice->setAccessibleName(text);
    voice->show();
    QAccessibleEvent event(voice, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void nameValue(QLabel *label, const QString &caption, const TextField &field, bool announced)
{
    const auto name = [label, caption, &field] {
        label->setAccessibleName(u"%1 %2"_s.arg(caption, field.text()).trimmed());
    };
    name();
    QObject::connect(&field, &TextField::changed, label, [label, name, announced] {
        name();
        if (announced)
            announce(label, label->accessibleName());
    });
}

} // namespace kervan
