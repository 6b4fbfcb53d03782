#include "app/realports.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"

#include <QApplication>
#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace {

// One lock for each user of the machine.
QString lockPath()
{
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    return folder + u"/kervan-transfer-%1.lock"_s.arg(
                        QString::fromLocal8Bit(qgetenv("USER") + qgetenv("USERNAME")));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Kervan Transfer"_s);
    QApplication::setOrganizationName(u"Kervan"_s);
    QLockFile instance(lockPath());
    instance.setStaleLockTime(0);
    if (!instance.tryLock() && instance.error() == QLockFile::LockFailedError)
        return 0; // another one is running; this one ends without a word

    kervan::speakTurkish(application);
    kervan::applyTheme(application);
    kervan::ScreenBoxes boxes;
    kervan::ScreenDialogs dialogs;
    kervan::SystemClock clock;
    kervan::OdbcServer sqlServer;
    kervan::Program program{.folder = QApplication::applicationDirPath(),
                            .aktifform = {},
                            .folders = {},
                            .db = {},
                            .boxes = boxes,
                            .dialogs = dialogs,
                            .clock = clock,
                            .sqlServer = sqlServer};
    kervan::MainWindow window(program);
    window.show();
    return QApplication::exec();
}
