#include "controls/pictures.h"
#include "controls/theme.h"

#include <QApplication>
#include <QDir>
#include <QImageReader>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace kervan;

namespace {

void dress(bool dark)
{
    applyTheme(*static_cast<QApplication *>(QCoreApplication::instance()), dark);
}

QImage png(const QString &path)
{
    return QImage(u":/pictures/"_s + path).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// What a widget of this ratio shows of a picture in a rectangle, of which `at` is the corner.
QImage shown(const QString &name, const QSize &size, qreal ratio, const QPoint &at = {})
{
    const QSize canvas = QSize(at.x(), at.y()) + size;
    QImage image((QSizeF(canvas) * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(ratio);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    picture(name).paint(&painter, {at, size});
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
}

} // namespace

class PicturesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { dress(false); }

    void everyPictureIsThereForEachScaleAndBothGrounds_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isOfLines");
        const QHash<QString, QSize> others = {{u"kervan"_s, {16, 16}},
                                              {u"resim"_s, {640, 360}},
                                              {u"tick"_s, {13, 13}},
                                              {u"tickdark"_s, {13, 13}}};
        for (const QFileInfo &file : QDir(QStringLiteral(PICTURES)).entryInfoList({u"*.svg"_s})) {
            const QString name = file.baseName();
            QFile svg(file.filePath());
            QVERIFY(svg.open(QIODevice::ReadOnly));
            const bool isOfLines = svg.readAll().contains(R"(viewBox="0 0 24 24")");
            const QSize usual = isOfLines ? QSize(16, 16) : QSize(48, 48);
            QTest::addRow("%s", qPrintable(name)) << name << others.value(name, usual) << isOfLines;
        }
        QTest::newRow("compact button") << u"stok"_s << QSize(22, 22) << false;
        QTest::newRow("task bar") << u"kervan"_s << QSize(32, 32) << false;
    }
    void everyPictureIsThereForEachScaleAndBothGrounds()
    {
        QFETCH(QString, name);
        QFETCH(QSize, size);
        QFETCH(bool, isOfLines);
        for (const qreal scale : {1.0, 1.5, 2.0, 3.0}) {
            const QString file = u"%1/%3/%2.png"_s.arg(name).arg((size * scale).width());
            const QImage light = png(file.arg(u"light"_s));
            QCOMPARE(light.size(), size * scale);
            dress(false);
            QCOMPARE(shown(name, size, scale), light);
            dress(true);
            const QImage onDark = shown(name, size, scale);
            QCOMPARE(onDark != light, isOfLines);
            QVERIFY(!isOfLines || onDark == png(file.arg(u"dark"_s)));
        }
    }

    void theStyleSheetFindsItsPicture()
    {
        dress(true);
        const QRegularExpression url(uR"(url\((.*?)\))"_s);
        const QString sheet =
            static_cast<QApplication *>(QCoreApplication::instance())->styleSheet();
        QCOMPARE(QImage(url.match(sheet).captured(1)).size(), QSize(13, 13));
    }

    void aPictureLiesOnWholePixelsAndIsNeverBlownUp()
    {
        for (const qreal ratio : {1.25, 1.5, 1.75}) {
            const QImage whole = png(u"stok/light/%1.png"_s.arg(48 * ratio));
            const QRect inside(0, 0, whole.width() - 1, whole.height() - 1);
            for (int at = 1; at <= 4; ++at) { // corners as at 1.25 or 4.5, within a pixel
                const int corner = qRound(at * ratio);
                QCOMPARE(shown(u"stok"_s, {48, 48}, ratio, {at, at})
                             .copy(inside.translated(corner, corner)),
                         whole.copy(inside));
            }
        }
        const QSize between(18, 18);
        QCOMPARE(shown(u"save"_s, between, 1),
                 png(u"save/light/20.png"_s)
                     .scaled(between, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        // In a room of another shape it keeps its own, in the middle.
        QCOMPARE(shown(u"save"_s, {40, 20}, 1).copy(10, 0, 20, 20), png(u"save/light/20.png"_s));
    }

    void aDisabledPictureIsFaint()
    {
        const auto middle = [](QIcon::Mode mode) {
            return picture(u"close"_s).pixmap({16, 16}, 1, mode).toImage().pixelColor(8, 8).alpha();
        };
        QCOMPARE(middle(QIcon::Normal), 255);
        QVERIFY(qAbs(middle(QIcon::Disabled) - 102) <= 1); // four tenths
    }

    void theIconOfTheProgramFilesHoldsItsSizes()
    {
        QImageReader reader(QStringLiteral(ICON));
        QList<int> widths;
        do {
            const QImage image = reader.read();
            QCOMPARE(image.width(), image.height());
            QVERIFY(image.pixelColor(image.rect().center()).alpha() == 255);
            widths << image.width();
        } while (reader.jumpToNextImage());
        QCOMPARE(widths, (QList<int>{16, 24, 32, 48, 64, 256}));
    }
};

QTEST_MAIN(PicturesTest)
#include "tst_pictures.moc"
