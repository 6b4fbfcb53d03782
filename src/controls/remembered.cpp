#include "controls/remembered.h"

#include <QCoreApplication>
#include <QSettings>

namespace kervan {

namespace {

bool isKept()
{
    return !QCoreApplication::organizationName().isEmpty();
}

QSettings settings()
{
    return {QSettings::IniFormat, QSettings::UserScope, QCoreApplication::organizationName(),
            QCoreApplication::applicationName()};
}

} // namespace

QVariant remembered(QStringView key)
{
    return isKept() ? settings().value(key.toString()) : QVariant();
}

void remember(QStringView key, const QVariant &value)
{
    if (isKept())
        settings().setValue(key.toString(), value);
}

} // namespace kervan
