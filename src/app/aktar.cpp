// The transfers without a window: kervan-aktar --help

#include "aktar/command.h"
#include "base/crashreport.h"
#include "base/systemclock.h"
#include "odbc/odbcserver.h"

#include <QCoreApplication>
#include <QLocale>
#include <QScopeGuard>
#include <QTextStream>

#include <chrono>
#include <csignal>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

using namespace Qt::StringLiterals;

namespace {

volatile std::sig_atomic_t isEnding = 0;

extern "C" void end(int)
{
    isEnding = 1;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"kervan-aktar"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(KERVAN_VERSION));
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    const QStringList arguments = QCoreApplication::arguments().sliced(1);
#ifdef Q_OS_WIN // the console would show other letters; a file gets the same bytes
    const auto asBefore = qScopeGuard([before = GetConsoleOutputCP()] {
        SetConsoleOutputCP(before); // else the rest of a batch file is read in it
    });
    SetConsoleOutputCP(CP_UTF8);
#endif
    QTextStream out(stdout);
    QTextStream errors(stderr);
    if (arguments.value(0) == u"--version") {
        out << "kervan-aktar " << QCoreApplication::applicationVersion() << '\n';
        return 0;
    }
    kervan::reportCrashes(QCoreApplication::applicationDirPath()); // where the window tells it
    kervan::OdbcServer sqlServer;
    kervan::SystemClock clock;
#ifdef SIGPIPE // who reads along may leave; a transfer in hand goes on
    std::signal(SIGPIPE, SIG_IGN);
#endif
    if (arguments.value(0) == u"izle") { // the others are ended by the system, at any moment
        std::signal(SIGINT, end);
        std::signal(SIGTERM, end);
        sqlServer.waitBy([](const auto &hasCome) { // a server may never answer
            while (!hasCome(std::chrono::milliseconds(200))) {
                if (isEnding)
                    return false;
            }
            return true;
        });
    }
    return kervan::runCommand(arguments, {.programFolder = QCoreApplication::applicationDirPath(),
                                          .clock = clock,
                                          .sqlServer = sqlServer,
                                          .streams = {.out =
                                                          [&](const QString &text) {
                                                              out << text;
                                                              out.flush();
                                                          },
                                                      .tell =
                                                          [&](const QString &line) {
                                                              errors << line << '\n';
                                                              errors.flush();
                                                          }},
                                          .isEnding = [] {
                                              return isEnding != 0;
                                          }});
}
