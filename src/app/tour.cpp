// Drives the real windows through the samples and lists what came of it:
// kervan-tour SAMPLES OUTPUT_FOLDER

#include "app/realports.h"
#include "app/samples.h"
#include "base/failure.h"
#include "controls/theme.h"
#include "frame/mainwindow.h"
#include "odbc/odbcserver.h"
#include "store/installation.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QTableView>
#include <QTest>
#include <QTextStream>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

class Tour
{
public:
    Tour(kervan::MainWindow &window, const QString &folder)
        : m_window(window)
        , m_folder(folder)
    {
        m_answers.setInterval(50);
        QObject::connect(&m_answers, &QTimer::timeout, [this] { answerModal(); });
        m_answers.start();
    }

    template<class Widget>
    Widget *find(QWidget *inside, const char *name)
    {
        auto *found = inside->findChild<Widget *>(QString::fromUtf8(name));
        if (!found)
            qFatal("the tour finds no %s", name);
        return found;
    }

    QWidget *screen(const char *name) { return find<QWidget>(&m_window, name); }
    void click(QWidget *inside, const char *name)
    {
        QTest::mouseClick(find<QAbstractButton>(inside, name), Qt::LeftButton);
        QTest::qWait(50);
    }
    /// Chooses an entry by keys, as a user at the keyboard does.
    void choose(QWidget *inside, const char *name, int entry)
    {
        auto *box = find<QComboBox>(inside, name);
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        for (int i = 0; i < entry; ++i)
            QTest::keyClick(box, Qt::Key_Down);
        if (box->currentIndex() == entry) // Home on the shown entry tells nobody
            Q_EMIT box->activated(entry);
    }
    void clickRow(QWidget *inside, const char *view, int row, int column)
    {
        auto *table = find<QTableView>(inside, view);
        const QPoint place = table->visualRect(table->model()->index(row, column)).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::qWait(50);
    }
    void picture(QWidget *widget, const QString &name)
    {
        QTest::qWait(100);
        const QString file = u"%1-%2.png"_s.arg(++m_pictures, 2, 10, QChar(u'0')).arg(name);
        widget->grab().save(m_folder + u'/' + file);
        m_made << file;
    }
    void picture(const QString &name) { picture(&m_window, name); }
    void nextFile(const QString &path) { m_nextFile = path; }
    const QStringList &made() const { return m_made; }

private:
    // Boxes and file dialogs block the click that brought them up, so a timer answers them.
    void answerModal()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *dialog = qobject_cast<QFileDialog *>(modal)) {
            if (m_nextFile.isEmpty())
                qFatal("the tour did not expect the dialog %s", qPrintable(dialog->windowTitle()));
            if (auto *name = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s))
                name->setText(m_nextFile);
            m_nextFile.clear();
            picture(dialog, u"dosya-penceresi"_s);
            static_cast<QDialog *>(dialog)->accept();
        } else if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            picture(box, u"kutu"_s);
            box->accept();
        }
    }

    kervan::MainWindow &m_window;
    QString m_folder;
    QTimer m_answers;
    QString m_nextFile;
    QStringList m_made;
    int m_pictures = 0;
};

// The whole of the table, then a price for the product that has none.
void dealerPrices(Tour &tour, kervan::MainWindow &window)
{
    tour.find<QAction>(&window, "urunformu")->trigger();
    QWidget *prices = tour.screen("urunform");
    if (!QTest::qWaitForWindowActive(prices))
        qFatal("the dealer prices did not come forward");
    auto *view = tour.find<QTableView>(prices, "l1");
    const int row = view->model()->rowCount() - 10;
    const QStringList texts{u"HLV-FST"_s, u"FISTIKLI HELVA 500 GR"_s, u"68,40"_s, u"60,75"_s};
    for (int i = 0; i < texts.size(); ++i) {
        view->setCurrentIndex(view->model()->index(row, i + 1));
        view->setFocus();
        for (const QChar letter : texts[i]) // the first letter opens the editor
            QTest::keyClick(QApplication::focusWidget(), letter.toLatin1());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        QTest::qWait(20);
    }
    tour.picture(prices, u"bayi-fiyatlari"_s);
    tour.click(prices, "chameleonButton7");
}

// Two definition screens, a record of one of them, and the file settings.
void definitions(Tour &tour, kervan::MainWindow &window)
{
    tour.find<QAction>(&window, "muhkod11")->trigger();
    tour.picture(tour.screen("muhkod"), u"muhasebe-kodlari"_s);
    tour.click(tour.screen("muhkod"), "chameleonButton8");
    tour.find<QAction>(&window, "firtanım")->trigger();
    QWidget *firms = tour.screen("fir");
    tour.picture(firms, u"firmalar"_s);
    tour.click(firms, "chameleonButton1");
    QTest::keyClicks(tour.find<QLineEdit>(firms, "Text3"), u"BURSA"_s);
    tour.picture(firms, u"firma-kaydi"_s);
    tour.click(firms, "chameleonButton7");
    tour.click(firms, "chameleonButton8");
    tour.find<QAction>(&window, "dosk")->trigger();
    tour.picture(tour.screen("ayr"), u"dosya-konumlari"_s);
    tour.click(tour.screen("ayr"), "chameleonButton8");
}

void invoices(Tour &tour, kervan::MainWindow &window, const QString &folder)
{
    tour.click(&window, "chameleonButton5");
    QWidget *fat = tour.screen("fat");
    tour.picture(u"fatura-bos"_s);
    tour.nextFile(folder + u"/txt/ornek.bif"_s);
    tour.click(fat, "chameleonButton5"); // warns of the product without a dealer price
    dealerPrices(tour, window);
    tour.click(fat, "chameleonButton2");
    tour.choose(fat, "c3", 0);
    tour.choose(fat, "c1", 0);
    tour.choose(fat, "c5", 2);
    tour.clickRow(fat, "l1", 5, 1);
    tour.picture(u"fatura-kalemleri"_s);
    tour.click(fat, "lvButtons_H2");
    tour.picture(tour.find<QMenu>(&window, "seminmenu"), u"liste-menusu"_s);
    tour.find<QMenu>(&window, "seminmenu")->close();
    tour.click(fat, "Check2");
    tour.picture(u"fatura-secili"_s);
    tour.nextFile(folder + u"/logo xml/satis"_s);
    tour.click(fat, "chameleonButton1");
    tour.picture(u"fatura-aktarildi"_s);
}

void cariCards(Tour &tour, kervan::MainWindow &window, const QString &folder)
{
    tour.click(&window, "chameleonButton1");
    QWidget *cr = tour.screen("cr");
    tour.picture(u"cari-bos"_s);
    tour.nextFile(folder + u"/txt/cariler.txt"_s);
    tour.click(cr, "chameleonButton5");
    tour.picture(u"cari-kartlari"_s);
    tour.nextFile(folder + u"/logo xml/cari"_s);
    tour.click(cr, "chameleonButton1");
    tour.nextFile(folder + u"/logo xml/cari-guncelleme"_s);
    tour.click(cr, "chameleonButton2");
    tour.picture(u"cari-kaydedildi"_s);
}

void stockCards(Tour &tour, kervan::MainWindow &window, const QString &folder)
{
    tour.click(&window, "chameleonButton4");
    QWidget *stoktrf = tour.screen("stoktrf");
    tour.nextFile(folder + u"/txt/stoklar.txt"_s);
    tour.click(stoktrf, "chameleonButton5");
    for (int list = 0; list < 5; ++list)
        tour.choose(stoktrf, qPrintable(u"c%1"_s.arg(list + 1)), 1 + list % 4);
    tour.picture(u"stok-kartlari"_s);
    tour.nextFile(folder + u"/logo xml/stok"_s);
    tour.click(stoktrf, "chameleonButton1");
    tour.picture(u"stok-kaydedildi"_s);
}

int run(const QString &samples, const QString &folder)
{
    QTextStream out(stdout);
    kervan::ScreenBoxes boxes;
    kervan::ScreenDialogs dialogs;
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
    const auto failed = kervan::passOver([&] {
        kervan::install(folder);
        kervan::layOutSamples(samples, folder);
    });
    if (failed) {
        out << failed->description() << '\n';
        return 1;
    }
    kervan::MainWindow window(program);
    window.show();
    Tour tour(window, folder);
    tour.picture(u"ana-pencere"_s);
    definitions(tour, window);
    invoices(tour, window, folder);
    cariCards(tour, window, folder);
    stockCards(tour, window, folder);

    out << "Pictures in " << folder << ":\n";
    for (const QString &name : tour.made())
        out << "  " << name << '\n';
    const QDir documents(folder + u"/logo xml"_s);
    out << "Documents in " << documents.path() << ":\n";
    for (const QFileInfo &file : documents.entryInfoList({u"*.xml"_s}, QDir::Files))
        out << "  " << file.fileName() << "  " << file.size() << " bytes\n";
    return documents.entryList({u"*.xml"_s}).size() == 5 ? 0 : 1;
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
