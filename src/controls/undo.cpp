#include "controls/undo.h"

#include "controls/gridview.h"
#include "controls/transferwidgets.h"

#include <QShortcut>

#include <algorithm>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

QString sentenceOf(const Grid::Undone &undone)
{
    QStringList parts;
    if (undone.rows > 0)
        parts << u"%1 satır"_s.arg(undone.rows);
    if (undone.ticks > 0)
        parts << u"%1 işaret"_s.arg(undone.ticks);
    return u"Geri alındı: "_s + parts.join(u", "_s);
}

// The rows that came back are brought into view, unless the user works elsewhere.
void undoIn(const QWidget *window, const QList<GridView *> &lists)
{
    GridView *list = *std::ranges::max_element(
        lists, {}, [](const GridView *view) { return view->grid().lastStep(); });
    const bool hadFocus = list->hasFocus();
    const auto undone = list->grid().undo();
    if (!undone)
        return tellBelow(window, u"Geri alınacak bir işaret ya da satır yok."_s);
    if (undone->rows > 0) {
        list->scrollTo(list->grid().index(undone->firstRow, 0),
                       QAbstractItemView::PositionAtCenter);
        if (hadFocus)
            list->enter(undone->firstRow);
    }
    tellBelow(window, sentenceOf(*undone));
}

} // namespace

void installUndo(QWidget *window)
{
    QList<GridView *> lists;
    for (const QString &name : {u"l1"_s, u"l2"_s}) {
        if (auto *list = window->findChild<GridView *>(name)) {
            list->grid().rememberSteps();
            lists << list;
        }
    }
    auto *shortcut = new QShortcut(QKeySequence(u"Ctrl+Z"_s), window);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, window,
                     [window, lists] { undoIn(window, lists); });
}

} // namespace kervan
