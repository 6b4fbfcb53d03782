#include "app/instancelock.h"
#include "app/realports.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Kervan Transfer"_s);
    QApplication::setOrganizationName(u"Kervan"_s);
    QApplication::setApplicationVersion(QStringLiteral(KERVAN_VERSION));
    kervan::InstanceLock instance(QApplication::applicationDirPath());
    if (!instance.take())
        return 0; // another one is running; this one ends without a word

    kervan::speakTurkish(application);
    kervan::applyTheme(application);
    kervan::ScreenBoxes boxes;
    kervan::ScreenDialogs dialogs(QApplication::applicationDirPath());
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
