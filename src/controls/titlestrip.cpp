#include "controls/titlestrip.h"

#include "controls/pictures.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace kervan {

using namespace Qt::StringLiterals;

TitleStrip::TitleStrip(QWidget *parent)
    : QFrame(parent)
    , m_caption(new QLabel)
    , m_close(new QToolButton)
{
    setObjectName(u"bar1"_s);
    m_caption->setTextFormat(Qt::PlainText);
    m_caption->setMinimumWidth(1); // a long file name makes no window wider
    m_close->setObjectName(u"chameleonButton4"_s);
    m_close->setIcon(picture(u"close"_s));
    m_close->setToolTip(u"Kapat (Esc)"_s);
    m_close->setAccessibleName(u"Kapat"_s);
    m_close->setAutoRaise(true);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(10, 1, 1, 1);
    row->addWidget(m_caption, 1);
    row->addWidget(m_close);
}

void TitleStrip::addNote(QWidget *note)
{
    auto *row = static_cast<QHBoxLayout *>(layout());
    row->insertWidget(row->count() - 1, note);
}

} // namespace kervan
