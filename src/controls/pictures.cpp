#include "controls/pictures.h"

#include "controls/theme.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

// Drawn anew at each size and in the colours of the moment, so that it follows the desktop's.
class Picture : public QIconEngine
{
public:
    explicit Picture(const QString &name)
    {
        QFile file(u":/pictures/%1.svg"_s.arg(name));
        if (!file.open(QIODevice::ReadOnly))
            qFatal("picture %s is missing", qPrintable(name));
        m_svg = file.readAll();
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        QSvgRenderer renderer(inColours());
        const int side = qMin(rect.width(), rect.height());
        QRectF place(0, 0, side, side);
        place.moveCenter(QRectF(rect).center());
        painter->setOpacity(mode == QIcon::Disabled ? 0.4 : 1);
        renderer.render(painter, place);
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
    QByteArray inColours() const
    {
        QByteArray svg = m_svg;
        const QPalette palette = QGuiApplication::palette();
        if (!svg.contains("viewBox=\"0 0 24 24\""))
            return svg; // a big one has grounds of its own
        if (isHighContrast(palette)) {
            const QByteArray text = palette.color(QPalette::ButtonText).name().toLatin1();
            for (const char *colour : {"#2f6f7e", "#55636f", "#d9a55b", "#c4604a"})
                svg.replace(colour, text);
        } else if (palette.color(QPalette::Window).lightness() < 128) {
            svg.replace("#2f6f7e", "#8db6be").replace("#55636f", "#b8c2ca");
            svg.replace("#c4604a", "#f0a08a");
        }
        return svg;
    }

    QByteArray m_svg;
};

} // namespace

QIcon picture(const QString &name)
{
    return QIcon(new Picture(name));
}

} // namespace kervan
