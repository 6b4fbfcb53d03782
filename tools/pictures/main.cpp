// Draws the program's pictures at the sizes in which it shows them:
//
//   kervan-pictures PICTURE.svg FOLDER WIDTH...          FOLDER/light/WIDTH.png and so on
//   kervan-pictures --dark PICTURE.svg FOLDER WIDTH...   the same, and FOLDER/dark/WIDTH.png
//   kervan-pictures --ico PICTURE.svg FILE.ico WIDTH...  an icon of Windows in all these widths

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void fail(const QString &what)
{
    std::fprintf(stderr, "kervan-pictures: %s\n", qPrintable(what));
    std::exit(1);
}

QByteArray contentsOf(const QString &name)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        fail(name + u": "_s + file.errorString());
    return file.readAll();
}

void write(const QString &name, const QByteArray &contents)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size() ||
        !file.flush())
        fail(name + u": "_s + file.errorString());
}

// Lines that stand out from a dark ground; the ochre does so as it is.
QByteArray onDark(QByteArray svg)
{
    svg.replace("#2f6f7e", "#8db6be").replace("#55636f", "#b8c2ca");
    return svg.replace("#c4604a", "#f0a08a").replace("#a8701f", "#e3b469");
}

QByteArray png(const QByteArray &svg, int width)
{
    QSvgRenderer renderer(svg);
    const QSizeF shape = renderer.viewBoxF().size();
    if (!renderer.isValid() || shape.isEmpty() || width <= 0)
        fail(u"no picture, or no width to draw it in"_s);
    QImage image(width, qRound(width * shape.height() / shape.width()),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    renderer.render(&painter);
    painter.end();
    QByteArray made;
    QBuffer buffer(&made);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG"))
        fail(u"no PNG can be written"_s);
    return made;
}

void writePictures(const QByteArray &svg, const QString &folder, const QList<int> &widths)
{
    if (!QDir().mkpath(folder))
        fail(folder + u" cannot be made"_s);
    for (const int width : widths)
        write(u"%1/%2.png"_s.arg(folder).arg(width), png(svg, width));
}

// A head, a directory of 16 bytes a picture, and the pictures one behind the other.
QByteArray icon(const QByteArray &svg, const QList<int> &widths)
{
    constexpr quint16 kindIcon = 1;
    constexpr quint16 planes = 1;
    constexpr quint16 bitsPerPixel = 32;
    constexpr qsizetype headSize = 6;
    constexpr qsizetype entrySize = 16;
    QByteArray head;
    QByteArray pictures;
    QDataStream out(&head, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << kindIcon << quint16(widths.size());
    const qsizetype first = headSize + widths.size() * entrySize;
    for (const int width : widths) {
        const QByteArray picture = png(svg, width);
        const auto side = static_cast<quint8>(width); // 256 is told as 0
        out << side << side << quint8(0) << quint8(0) << planes << bitsPerPixel
            << quint32(picture.size()) << quint32(first + pictures.size());
        pictures += picture;
    }
    return head + pictures;
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QStringList arguments = QGuiApplication::arguments().mid(1);
    const QString mode = arguments.value(0).startsWith(u"--") ? arguments.takeFirst() : QString();
    if (arguments.size() < 3 || (!mode.isEmpty() && mode != u"--dark" && mode != u"--ico"))
        fail(u"[--dark|--ico] PICTURE.svg TARGET WIDTH..."_s);
    const QByteArray svg = contentsOf(arguments.takeFirst());
    const QString target = arguments.takeFirst();
    QList<int> widths;
    for (const QString &width : std::as_const(arguments))
        widths << width.toInt();
    if (mode == u"--ico") {
        write(target, icon(svg, widths));
        return 0;
    }
    writePictures(svg, target + u"/light"_s, widths);
    if (mode == u"--dark")
        writePictures(onDark(svg), target + u"/dark"_s, widths);
    return 0;
}
