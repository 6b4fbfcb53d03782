// Drives the real windows through the samples and lists what came of it:
// kervan-tour SAMPLES OUTPUT_FOLDER [TIMES]

#include "app/guidefiles.h"
#include "app/realports.h"
#include "app/samples.h"
#include "base/crashreport.h"
#include "base/failure.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"
#include "store/installation.h"
#include "tour/stops.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QPixmapCache>
#include <QTextStream>

#include <cstddef>
#include <optional>

#ifdef __SANITIZE_ADDRESS__
// Its library has it, but g++ has no header for it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

using namespace Qt::StringLiterals;

namespace {

// The same moment each time, so that the documents of two tours can be compared.
class ToursClock : public kervan::Clock
{
public:
    QDateTime now() const override { return {{2021, 3, 16}, {9, 30}}; }
};

using Documents = QMap<QString, QByteArray>;

// Gives the documents; nothing where the folder could not be laid out.
std::optional<Documents> visit(const QString &samples, const QString &folder,
                               kervan::Tour::Pictures pictures, QTextStream &out)
{
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
        return std::nullopt;
    }
    kervan::MainWindow window(program);
    window.showNormal();
    window.resize(1280, 860); // the desktop without a display is smaller
    kervan::TdsStandin logo;
    kervan::Tour tour(window, folder, pictures);
    kervan::visitAll(tour, logo);
    if (pictures == kervan::Tour::Pictures::Kept) {
        out << "Pictures in " << folder << ":\n";
        for (const QString &name : tour.made())
            out << "  " << name << '\n';
    }
    Documents documents;
    for (const QFileInfo &info : QDir(folder + u"/logo xml"_s).entryInfoList({u"*.xml"_s})) {
        QFile file(info.filePath());
        if (file.open(QIODevice::ReadOnly))
            documents[info.fileName()] = file.readAll();
    }
    return documents;
}

// What this process holds, in MB: by the system, or what is not given back yet where the address
// sanitizer, which itself holds ever more, counts it. 0 where nobody tells.
double held()
{
#ifdef __SANITIZE_ADDRESS__
    return static_cast<double>(__sanitizer_get_current_allocated_bytes()) / 1e6;
#endif
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray status = file.readAll();
    const qsizetype at = status.indexOf("VmRSS:");
    return at < 0 ? 0 : status.mid(at + 6, 20).trimmed().split(' ').first().toDouble() / 1000;
}

// The same over and over in one process: the documents stay the same, and from the tenth time on so
// does the memory, but for the names of drawn shapes, which the library keeps when the shapes are
// gone.
bool holds(const QString &samples, const QString &folder, int times, const Documents &first,
           QTextStream &out)
{
    constexpr int settled = 10;
    constexpr double mayGrow = 1.05;
    constexpr double ofNames = 0.5; // MB each time, at most
    double tenth = 0;
    for (int i = 2; i <= times; ++i) {
        const QString again = folder + u"/tekrar"_s;
        QDir(again).removeRecursively();
        const auto documents = visit(samples, again, kervan::Tour::Pictures::Dropped, out);
        if (documents != first) {
            out << "Time " << i << " gives other documents\n";
            return false;
        }
        QPixmapCache::clear(); // the shapes fill it up to a bound of their own
        out << "Time " << i << ": " << held() << " MB" << Qt::endl;
        if (i == settled)
            tenth = held();
    }
    const double last = held();
    const bool isFlat = last > 0 && last <= tenth * mayGrow + ofNames * (times - settled);
    if (times > settled && !isFlat)
        out << "Memory grows, or is not told: " << tenth << " MB at the tenth time, then " << last
            << '\n';
    return times <= settled || isFlat;
}

int run(const QString &samples, const QString &folder, int times)
{
    QTextStream out(stdout);
    const auto documents = visit(samples, folder, kervan::Tour::Pictures::Kept, out);
    if (!documents)
        return 1;
    out << "Documents in " << folder << "/logo xml:\n";
    for (auto document = documents->cbegin(); document != documents->cend(); ++document)
        out << "  " << document.key() << "  " << document.value().size() << " bytes\n";
    return documents->size() == 15 && holds(samples, folder, times, *documents, out) ? 0 : 1;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 3 || arguments.size() > 4) {
        QTextStream(stdout) << "kervan-tour SAMPLES OUTPUT_FOLDER [TIMES]\n";
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
    kervan::reportCrashes(folder);
    return run(arguments[1], folder, arguments.value(3, u"1"_s).toInt());
}
