#include "controls/waitstrip.h"

#include "controls/announcing.h"
#include "controls/keyedbutton.h"
#include "controls/notestrip.h"
#include "controls/titlestrip.h"
#include "controls/transferwidgets.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView keyText = u"F12";

} // namespace

WaitStrip::WaitStrip(QWidget *screen)
    : QFrame(screen)
    , m_text(new QLabel)
    , m_button(new KeyedButton(u"Beklemeyi bırak"_s, keyText.toString()))
{
    setObjectName(u"bekleyis"_s);
    setAutoFillBackground(true);
    m_text->setObjectName(u"beklenen"_s);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_button->setObjectName(u"beklemeyibirak"_s);
    m_button->setFocusPolicy(Qt::NoFocus); // the screen keeps its place
    m_button->setToolTip(
        u"Logo'nun yanıtını beklemeden sürdürür; sunucuya bir şey gönderilmez (%1)"_s.arg(keyText));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 3, 4, 3);
    row->addWidget(m_text, 1);
    row->addWidget(m_button);
    showTime(0);
    place();
    screen->installEventFilter(this);
    show();
    raise();
    setAccessibleName(u"Logo'nun yanıtı bekleniyor. Beklemeyi bırakmak için %1."_s.arg(keyText));
    announce(this, accessibleName());
}

void WaitStrip::showTime(int seconds)
{
    const QString time = seconds > 0 ? u" (%1 sn)"_s.arg(seconds) : QString();
    m_text->setText(
        u"Logo'nun yanıtı bekleniyor…%1 Bu arada başka tuş ve tıklama alınmaz."_s.arg(time));
}

bool WaitStrip::isKey(int key, Qt::KeyboardModifiers modifiers)
{
    return key == Qt::Key_F12 && modifiers == Qt::NoModifier;
}

bool WaitStrip::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        place();
    return QFrame::eventFilter(watched, event);
}

void WaitStrip::place()
{
    const QWidget *screen = parentWidget();
    const QWidget *above = screen->findChild<TitleStrip *>();
    if (const auto *notes = screen->findChild<NoteStrip *>(); notes && notes->isVisible())
        above = notes;
    const int top = (above ? above->geometry().bottom() + 1 : screenMargins.top()) + screenSpacing;
    const int width = screen->width() - screenMargins.left() - screenMargins.right();
    setGeometry(screenMargins.left(), top, width, sizeHint().height());
}

} // namespace kervan
