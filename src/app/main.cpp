#include "aktar/journal.h"
#include "aktar/outcome.h"
#include "app/crashleft.h"
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
#include <QTemporaryFile>

using namespace Qt::StringLiterals;

namespace {

constexpr auto patience = std::chrono::seconds(5); // for a transfer that goes on without a window

bool canBeWritten(const QString &folder)
{
    QTemporaryFile file(folder + u"/kervan-XXXXXX.tmp"_s);
    return file.open();
}

// What the user should know of the program folder, one line; empty if all is well.
QString stateOf(const QString &folder, const QString &recovered)
{
    QStringList sentences;
    if (const QString report = kervan::leftByCrash(folder); !report.isEmpty())
        sentences << u"%1 geçen sefer yarıda kapandı; raporu: %2"_s.arg(
            kervan::isOfCommand(report) ? u"kervan-aktar"_s : u"Program"_s,
            QDir::toNativeSeparators(report));
    if (!canBeWritten(folder))
        sentences
            << u"Program klasörüne yazılamıyor, ayarlar ve numaralar saklanamaz. Yazma hakkınız "
               "olan bir yere taşıyın ya da bu hakkı isteyin: %1"_s.arg(
                   QDir::toNativeSeparators(folder));
    if (!recovered.isEmpty())
        sentences << recovered;
    return sentences.join(u"  "_s);
}

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
    window.tell(stateOf(folder, opening.told));
    window.show();
    return QApplication::exec();
}
