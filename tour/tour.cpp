#include "tour/tour.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QHash>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QTableView>
#include <QTest>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int spotSize = 20;
constexpr QColor spotColour(0xb3, 0x3a, 0x1f);

// Windows are drawn in few colours; the seldom ones, of the edges of letters, give way to those
// next to them, and the file is a third of its size.
QImage withFewColours(const QImage &picture)
{
    constexpr qsizetype most = 256;
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    QList<QRgb> colours = counts.keys();
    std::ranges::sort(colours, [&counts](QRgb one, QRgb other) {
        return std::pair(counts[one], one) > std::pair(counts[other], other);
    });
    colours.resize(std::min(colours.size(), most));
    return picture.convertToFormat(QImage::Format_Indexed8, colours, Qt::ThresholdDither);
}

void drawSpot(QPainter &painter, const QPoint &centre, int number)
{
    const QRect circle(centre - QPoint(spotSize / 2, spotSize / 2), QSize(spotSize, spotSize));
    painter.setBrush(spotColour);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawEllipse(circle);
    painter.drawText(circle, Qt::AlignCenter, QString::number(number));
}

} // namespace

Tour::Tour(MainWindow &window, const QString &folder, Pictures pictures)
    : m_window(window)
    , m_folder(folder)
    , m_pictures(pictures)
{
    m_answers.setInterval(50);
    QObject::connect(&m_answers, &QTimer::timeout, [this] { answerModal(); });
    m_answers.start();
}

void Tour::click(QWidget *inside, const char *name)
{
    auto *button = find<QAbstractButton>(inside, name);
    const QPoint onItsBox(qMin(10, button->width() / 2), button->height() / 2);
    QTest::mouseClick(button, Qt::LeftButton, {}, onItsBox);
    QTest::qWait(50);
}

void Tour::choose(const char *action)
{
    find<QAction>(&m_window, action)->trigger();
}

void Tour::choose(QWidget *inside, const char *list, int entry)
{
    auto *box = find<QComboBox>(inside, list);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Home);
    for (int i = 0; i < entry; ++i)
        QTest::keyClick(box, Qt::Key_Down);
    if (box->currentIndex() == entry) // Home on the shown entry tells nobody
        Q_EMIT box->activated(entry);
}

void Tour::clickRow(QWidget *inside, const char *view, int row, int column)
{
    auto *table = find<QTableView>(inside, view);
    const QPoint place = table->visualRect(table->model()->index(row, column)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QTest::qWait(50);
}

void Tour::type(QWidget *inside, const char *edit, const QString &text)
{
    auto *line = find<QLineEdit>(inside, edit);
    line->setFocus();
    line->selectAll();
    for (const QChar letter : text) // keyClicks() knows no Turkish letters
        QTest::sendKeyEvent(QTest::Click, line, Qt::Key_unknown, QString(letter), {});
}

void Tour::picture(QWidget *widget, const QString &name)
{
    QTest::qWait(100);
    const QString file = u"%1-%2.png"_s.arg(++m_count, 3, 10, QChar(u'0')).arg(name);
    const QPixmap picture = widget->grab();
    if (m_pictures == Pictures::Dropped)
        return;
    picture.save(m_folder + u'/' + file);
    m_made << file;
}

void Tour::guidePicture(QWidget *widget, const QString &name, const QList<Spot> &spots,
                        const QRect &area)
{
    QTest::qWait(100);
    const QDir folder(m_folder + u"/pictures"_s);
    folder.mkpath(u"."_s);
    const QImage whole = shot(widget, spots);
    if (m_pictures == Pictures::Dropped)
        return;
    withFewColours(area.isEmpty() ? whole : whole.copy(area))
        .save(folder.filePath(name + u".png"_s), "PNG", 0); // packed as small as it goes
}

// A number stands at the upper right corner of its control, where the least is written.
QImage Tour::shot(QWidget *widget, const QList<Spot> &spots)
{
    QImage picture = widget->grab().toImage();
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(13);
    painter.setFont(font);
    constexpr int half = spotSize / 2;
    const QRect room = widget->rect().adjusted(half + 1, half + 1, -half - 1, -half - 1);
    int number = 0;
    QList<QPoint> drawn;
    for (const Spot &spot : spots) {
        const auto *control = find<QWidget>(spot.inside, spot.name);
        const QPoint corner = control->mapTo(widget, QPoint(control->width() - 2, 2));
        const int left = corner.x() - control->width(); // for what reaches to the edge
        QPoint centre(corner.x() > room.right() ? std::max(left, room.left()) : corner.x(),
                      std::max(corner.y(), room.top()));
        const auto covers = [&](const QPoint &other) {
            return (other - centre).manhattanLength() < spotSize;
        };
        while (std::ranges::any_of(drawn, covers))
            centre.rx() += spotSize;
        drawn << centre;
        drawSpot(painter, centre, ++number);
    }
    return picture;
}

// Boxes and file dialogs block the click that brought them up, so a timer answers them.
void Tour::answerModal()
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

} // namespace kervan
