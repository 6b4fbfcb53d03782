// Lays out a program folder with the user guide: kervan-kurulum FOLDER [SAMPLES]
// or tells its version: kervan-kurulum --version

#include "app/guidefiles.h"
#include "app/samples.h"
#include "base/failure.h"
#include "store/installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(KERVAN_VERSION));
    const QStringList arguments = QCoreApplication::arguments();
    QTextStream out(stdout);
#ifdef Q_OS_WIN // the installer reads it in the letters of the desktop
    out.setEncoding(QStringConverter::System);
#endif
    out << "kervan-kurulum " << QCoreApplication::applicationVersion() << '\n';
    if (arguments.value(1) == u"--version")
        return 0;
    if (arguments.size() < 2 || arguments.size() > 3 || arguments[1].startsWith(u'-')) {
        out << "kervan-kurulum FOLDER [SAMPLES]\n";
        return 2;
    }
    const auto failed = kervan::passOver([&] {
        const QString folder = QDir(arguments[1]).absolutePath();
        kervan::install(folder);
        kervan::layOutGuide(folder);
        if (arguments.size() == 3)
            kervan::layOutSamples(arguments[2], folder);
        out << "Program folder: " << folder << '\n';
    });
    if (failed)
        out << failed->description() << '\n';
    return failed ? 1 : 0;
}
