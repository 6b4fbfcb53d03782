#include "frame/resim.h"

#include <QPainter>
#include <QSvgRenderer>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(640, 360);

} // namespace

Resim::Resim(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(u"resim"_s);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(pictureSize);
}

// Half across and two fifths down: the two rules differ on purpose.
void Resim::place(const QSize &frame)
{
    move(frame.width() / 2 - width() / 2, qRound(frame.height() / 2.5) - height() / 2);
}

void Resim::paintEvent(QPaintEvent *)
{
    QSvgRenderer renderer(u":/pictures/resim.svg"_s);
    QPainter painter(this);
    renderer.render(&painter);
}

} // namespace kervan
