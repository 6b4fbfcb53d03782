#include "base/filefault.h"

#include <QDir>
#include <QFileInfo>

namespace kervan {

using namespace Qt::StringLiterals;

QString filefault(const QFileDevice &file)
{
    const QFileInfo info(file.fileName());
    if (info.isDir())
        return u"bu bir klasör"_s;
    if (!info.dir().exists())
        return u"klasörü yok"_s;
    switch (file.error()) {
    case QFileDevice::PermissionsError:
        return u"izin yok"_s;
    case QFileDevice::ResourceError:
        return u"yer ya da bellek yok"_s;
    case QFileDevice::OpenError:
        if (!info.exists())
            return u"dosya yok"_s;
        break;
    default:
        break;
    }
    return file.errorString(); // in the words of the desktop
}

} // namespace kervan
