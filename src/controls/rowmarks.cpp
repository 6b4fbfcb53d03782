#include "controls/rowmarks.h"

#include "controls/gridview.h"
#include "controls/pictures.h"
#include "controls/theme.h"

#include <QHelpEvent>
#include <QPainter>
#include <QPalette>
#include <QToolTip>

#include <array>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int pictureSide = 16;
constexpr int air = 4;
constexpr int share = 14; // of a hundred, of the mark's colour in its row's ground
constexpr QColor grey(0x80, 0x88, 0x90);
constexpr QColor amber(0xd9, 0xa0, 0x30);
constexpr QColor red(0xd8, 0x50, 0x38);

// In the order of the kinds.
const std::array<QIcon, 5> &pictures()
{
    static const std::array<QIcon, 5> all{QIcon(), picture(u"markwarning"_s),
                                          picture(u"markerror"_s), picture(u"marksame"_s),
                                          picture(u"markdiffers"_s)};
    return all;
}

QColor colourOf(RowMark::Kind kind)
{
    switch (kind) {
    case RowMark::Error:
        return red;
    case RowMark::Warning:
    case RowMark::Differs:
        return amber;
    case RowMark::Same:
        return grey;
    case RowMark::None:
        break;
    }
    return {};
}

} // namespace

QString spoken(const RowMark &mark)
{
    switch (mark.kind) {
    case RowMark::Error:
        return u"Hata: "_s + mark.text;
    case RowMark::Warning:
        return u"Uyarı: "_s + mark.text;
    default:
        return mark.text;
    }
}

QColor groundOf(const QPalette &palette, RowMark::Kind kind, bool isTicked)
{
    const QColor ground = isTicked ? tint(palette) : QColor();
    if (kind == RowMark::None || isHighContrast(palette))
        return ground;
    return mixed(isTicked ? ground : palette.color(QPalette::Base), colourOf(kind), share);
}

MarkHeader::MarkHeader(GridView *view)
    : QHeaderView(Qt::Vertical, view)
    , m_view(view)
{
    setSectionResizeMode(Fixed);
    setSectionsClickable(true);
    setHighlightSections(false);
}

QSize MarkHeader::sizeHint() const
{
    return {m_count * (pictureSide + air) + air, 0};
}

void MarkHeader::setPictures(int count)
{
    m_count = count;
    setVisible(count > 0);
    viewport()->update();
}

// The numbers of the rows are none of the sources', and would be taken for theirs.
void MarkHeader::initStyleOptionForIndex(QStyleOptionHeader *option, int row) const
{
    QHeaderView::initStyleOptionForIndex(option, row);
    option->text.clear();
}

void MarkHeader::paintSection(QPainter *painter, const QRect &rect, int row) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, row);
    painter->restore();
    const RowMark mark = m_view->markOf(row);
    QRect place(0, 0, pictureSide, pictureSide);
    place.moveCenter(rect.center());
    if (m_count > 1)
        place.moveLeft(rect.left() + air);
    pictures()[m_count > 1 ? mark.kind : mark.ground()].paint(painter, place);
    if (m_count > 1)
        pictures()[mark.written].paint(painter, place.translated(pictureSide + air, 0));
}

bool MarkHeader::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QHeaderView::viewportEvent(event);
    auto *help = static_cast<QHelpEvent *>(event);
    m_view->showMarkText(help->globalPos(), logicalIndexAt(help->pos()));
    return true;
}

} // namespace kervan
