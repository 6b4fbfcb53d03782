#include "controls/pictures.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace kervan {

using namespace Qt::StringLiterals;

QIcon picture(const QString &name)
{
    QFile file(u":/pictures/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("picture %s is missing", qPrintable(name));
    QByteArray svg = file.readAll();
    const bool isLine = svg.contains("viewBox=\"0 0 24 24\"");
    if (isLine && QGuiApplication::palette().color(QPalette::Window).lightness() < 128)
        svg.replace("#2f6f7e", "#8db6be").replace("#55636f", "#b8c2ca");
    QSvgRenderer renderer(svg);
    QIcon icon;
    for (const int size : isLine ? QList<int>{20, 40} : QList<int>{48, 64, 96, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace kervan
