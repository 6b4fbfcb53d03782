// Drives the real windows through the samples and lists what came of it:
// kervan-tour SAMPLES OUTPUT_FOLDER

#include "app/guidefiles.h"
#include "app/realports.h"
#include "app/samples.h"
#include "base/failure.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"
#include "store/installation.h"
#include "tour/stops.h"

#include <QApplication>
#include <QDir>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

// The same moment each time, so that the documents of two tours can be compared.
class ToursClock : public kervan::Clock
{
public:
    QDateTime now() const override { return {{2021, 3, 16}, {9, 30}}; }
};

int run(const QString &samples, const QString &folder)
{
    QTextStream out(stdout);
    kervan::ScreenBoxes boxes;
    kervan::ScreenDialogs dialogs(folder);
    ToursClock clock;
    kervan::OdbcServer sqlServer;
    kervan::Program program{.folder = folder,
                            .aktifform = {},
                            .folders = {},
                            .db = {},
                            .boxes = boxes,
                            .dialogs = dialogs,
                            .clock = clock,
                            .sqlServer = sqlServer};
    const auto failed = kervan::passOver([&] {
        kervan::install(folder);
        kervan::layOutGuide(folder);
        kervan::layOutSamples(samples, folder, clock.now().date());
    });
    if (failed) {
        out << failed->description() << '\n';
        return 1;
    }
    kervan::MainWindow window(program);
    window.showNormal();
    window.resize(1280, 860); // the desktop without a display is smaller
    kervan::TdsStandin logo;
    kervan::Tour tour(window, folder);
    kervan::visitAll(tour, logo);

    out << "Pictures in " << folder << ":\n";
    for (const QString &name : tour.made())
        out << "  " << name << '\n';
    const QDir documents(folder + u"/logo xml"_s);
    out << "Documents in " << documents.path() << ":\n";
    for (const QFileInfo &file : documents.entryInfoList({u"*.xml"_s}, QDir::Files))
        out << "  " << file.fileName() << "  " << file.size() << " bytes\n";
    return documents.entryList({u"*.xml"_s}).size() == 15 ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        QTextStream(stdout) << "kervan-tour SAMPLES OUTPUT_FOLDER\n";
        return 2;
    }
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    kervan::speakTurkish(application);
    kervan::applyTheme(application, qEnvironmentVariableIsSet("KERVAN_TOUR_DARK"));
    const QString folder = QDir(arguments[2]).absolutePath();
    if (!QDir(folder).isEmpty()) {
        QTextStream(stdout) << folder << " is not empty\n";
        return 2;
    }
    return run(arguments[1], folder);
}
