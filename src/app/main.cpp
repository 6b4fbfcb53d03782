#include "aktar/journal.h"
#include "aktar/outcome.h"
#include "app/folderstate.h"
#include "app/instancelock.h"
#include "app/lastnet.h"
#include "app/realports.h"
#include "base/crashreport.h"
#include "base/systemclock.h"
#include "controls/theme.h"
#include "frame/answerwait.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"
#include "store/folderlock.h"
#include "store/installation.h"
#include "store/settling.h"

#include <QApplication>
#include <QDir>
#include <QScopeGuard>

using namespace Qt::StringLiterals;

namespace {

constexpr auto patience = std::chrono::seconds(5); // for a transfer that goes on without a window

} // namespace

int main(int argc, char **argv)
{
#ifdef Q_OS_WIN // follows the desktop into the dark only when told to
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "windows:darkmode=2");
#endif
    kervan::NettedApplication application(argc, argv);
    QApplication::setApplicationName(u"Kervan Transfer"_s);
    QApplication::setOrganizationName(u"Kervan"_s);
    QApplication::setApplicationVersion(QStringLiteral(KERVAN_VERSION));
    const QString folder = QApplication::applicationDirPath();
    kervan::InstanceLock instance(folder);
    if (!instance.take())
        return 0; // another one is running; this one ends without a word
    kervan::reportCrashes(folder);
    if (kervan::isNewFolder(folder)) // just unpacked; what can't be laid out, the screens tell
        kervan::passOver([&] { kervan::install(folder); });

    kervan::speakTurkish(application);
    kervan::applyTheme(application);
    kervan::ScreenBoxes boxes;
    kervan::FolderLock inFolder(folder, kervan::FolderLock::Who::Window);
    if (!inFolder.take(patience)) {
        boxes.show({u"Bu program klasöründe şu anda pencere açmadan aktarım yapılıyor "
                    "(kervan-aktar). Bitince yeniden başlatın.\n%1"_s.arg(
                        QDir::toNativeSeparators(inFolder.holder()))});
        return kervan::InUse;
    }
    const kervan::Opening opening = kervan::recoverForWindow(folder);
    if (!opening.mayOpen) {
        boxes.show({opening.told});
        return kervan::Barred;
    }
    if (inFolder.isAlone())
        kervan::settle(folder);
    kervan::ScreenDialogs dialogs(folder);
    kervan::SystemClock clock;
    kervan::OdbcServer sqlServer;
    kervan::Program program{.folder = folder,
                            .aktifform = {},
                            .folders = {},
                            .db = {},
                            .boxes = boxes,
                            .dialogs = dialogs,
                            .clock = clock,
                            .sqlServer = sqlServer};
    kervan::MainWindow window(program);
    kervan::AnswerWait wait([&window] { return window.screenAtWork(); });
    sqlServer.waitBy([&wait](const auto &hasCome) { return wait.until(hasCome); });
    application.tellBy([&window](const QString &sentence) { window.tellFault(sentence); });
    const auto untold = qScopeGuard([&application] { application.tellBy(nullptr); });
    window.tell(kervan::folderState(folder, opening.told));
    window.show();
    return QApplication::exec();
}
