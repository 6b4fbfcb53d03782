#include "frame/resim.h"

#include "controls/pictures.h"

#include <QPainter>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize pictureSize(640, 360);

} // namespace

Resim::Resim(QWidget *parent)
    : QWidget(parent)
    , m_picture(picture(u"resim"_s))
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
    QPainter painter(this);
    m_picture.paint(&painter, rect());
}

} // namespace kervan
