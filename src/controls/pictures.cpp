#include "controls/pictures.h"

#include "controls/theme.h"

#include <QDir>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString folderOf(const QString &name)
{
    return u":/pictures/"_s + name;
}

// Those of the PNGs, in pixels, rising.
QList<int> widthsIn(const QString &folder)
{
    QList<int> widths;
    for (const QString &file : QDir(folder + u"/light"_s).entryList())
        widths << file.chopped(4).toInt(); // ".png"
    if (widths.isEmpty())
        qFatal("%s is missing", qPrintable(folder));
    std::ranges::sort(widths);
    return widths;
}

// The least that needs not be blown up.
int enough(const QList<int> &widths, int wanted)
{
    const auto found = std::ranges::lower_bound(widths, wanted);
    return found == widths.end() ? widths.last() : *found;
}

QString fileIn(const QString &folder, const QString &ground, int width)
{
    return u"%1/%2/%3.png"_s.arg(folder, ground).arg(width);
}

// Takes the PNG for each size and for the colours of the moment, so that it follows the desktop's.
class Picture : public QIconEngine
{
public:
    explicit Picture(const QString &name)
        : m_folder(folderOf(name))
        , m_widths(widthsIn(m_folder))
        , m_shape(QPixmap(fileIn(m_folder, u"light"_s, m_widths.first())).size())
    {
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const qreal ratio = painter->device()->devicePixelRatio();
        QPixmap pixmap = inColours(m_shape.scaled(rect.size() * ratio, Qt::KeepAspectRatio));
        pixmap.setDevicePixelRatio(ratio);
        QRectF place({}, pixmap.deviceIndependentSize());
        place.moveCenter(QRectF(rect).center());
        const qreal opacity = painter->opacity();
        painter->setOpacity(mode == QIcon::Disabled ? 0.4 : opacity);
        painter->drawPixmap(place.topLeft(), pixmap);
        painter->setOpacity(opacity);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, {{0, 0}, size}, mode, state);
        return drawn;
    }
    QIconEngine *clone() const override { return new Picture(*this); }

private:
    // A picture that has no dark sister has grounds of its own, and is the same everywhere.
    QPixmap inColours(const QSize &size) const
    {
        const QPalette palette = QGuiApplication::palette();
        const bool isOfLines = QDir(m_folder + u"/dark"_s).exists();
        const bool isOnDark = isDark(palette);
        const bool isPlain = isHighContrast(palette);
        const QString ground = isOfLines && isOnDark && !isPlain ? u"dark"_s : u"light"_s;
        QPixmap pixmap(fileIn(m_folder, ground, enough(m_widths, size.width())));
        if (isOfLines && isPlain) {
            QPainter painter(&pixmap);
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(pixmap.rect(), palette.color(QPalette::ButtonText));
        }
        if (pixmap.size() == size)
            return pixmap;
        return pixmap.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

    QString m_folder;
    QList<int> m_widths;
    QSize m_shape;
};

} // namespace

QIcon picture(const QString &name)
{
    return QIcon(new Picture(name));
}

QString pictureFile(const QString &name, int width)
{
    const QString folder = folderOf(name);
    const int pixels = qRound(width * qApp->devicePixelRatio());
    return fileIn(folder, u"light"_s, enough(widthsIn(folder), pixels));
}

} // namespace kervan
