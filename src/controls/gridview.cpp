#include "controls/gridview.h"

#include "controls/frozenheader.h"
#include "controls/griddelegate.h"

#include <QAbstractButton>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int twipsPerPixel = 15;
constexpr int rowsLookedAt = 200; // for the width of a column
constexpr int widestColumn = 420;
constexpr int leastSpread = 160;
constexpr int rowsNeeded = 2;

bool isJump(const QKeyEvent *event)
{
    if (event->modifiers() & Qt::ShiftModifier)
        return false;
    const int key = event->key();
    return key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown;
}

} // namespace

GridView::GridView(Grid &grid, const QString &name, QWidget *parent)
    : QTableView(parent)
    , m_grid(grid)
    , m_header(new FrozenHeader(this))
    , m_marks(new MarkHeader(this))
{
    setHorizontalHeader(m_header);
    setVerticalHeader(m_marks);
    setObjectName(name);
    setModel(&grid);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setEditTriggers(NoEditTriggers);
    verticalHeader()->hide();
    setCornerButtonEnabled(false);
    findChild<QAbstractButton *>()->setAccessibleName(u"Satır imleri"_s); // shown with the marks
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setResizeContentsPrecision(rowsLookedAt);
    for (int column = 0; column < grid.columnCount(); ++column)
        setColumnWidth(column, grid.columns()[column].twips / twipsPerPixel);
    connect(&grid, &QAbstractItemModel::modelAboutToBeReset, this, [this] { m_isRefilled = true; });
    connect(&grid, &QAbstractItemModel::modelReset, this, [this] { m_isRefilled = false; });
    connect(&grid, &QAbstractItemModel::modelReset, this, &GridView::fitColumns);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this](int column) {
        if (m_fitted && !m_fitting)
            m_setByUser << column;
    });
    connect(&grid, &QAbstractItemModel::modelReset, this, &GridView::filterAfterReset);
    connect(&grid, &QAbstractItemModel::modelReset, this, &GridView::describe);
    connect(&grid, &QAbstractItemModel::rowsInserted, this, &GridView::describe);
    horizontalScrollBar()->setAccessibleName(u"Yatay kaydırma"_s);
    verticalScrollBar()->setAccessibleName(u"Dikey kaydırma"_s);
    setItemDelegate(new GridDelegate(this));
    // A tick is told of by the first cell, and tints its whole row; the frame of the current row
    // goes round all of it.
    connect(&grid, &QAbstractItemModel::dataChanged, viewport(), qOverload<>(&QWidget::update));
    connect(selectionModel(), &QItemSelectionModel::currentRowChanged, viewport(),
            qOverload<>(&QWidget::update));
    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_header, &QWidget::customContextMenuRequested, this,
            [this](const QPoint &place) { showColumnMenu(m_header->mapToGlobal(place)); });
}

void GridView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    describe();
    viewport()->update();
}

// What is painted on an empty list.
void GridView::describe()
{
    setAccessibleDescription(m_grid.isEmpty() ? m_emptyText : QString());
}

// The first fill fits the columns; later ones only widen them, and never one that the user has set.
void GridView::fitColumns()
{
    if (m_grid.isEmpty())
        return;
    m_fitting = true;
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        const int contents =
            qMax(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column)) + 2;
        const int wanted = qMin(contents, widestColumn);
        if (!m_setByUser.contains(column) && (!m_fitted || wanted > columnWidth(column)))
            setColumnWidth(column, wanted);
    }
    m_fitting = false;
    m_fitted = true;
    spreadColumns();
}

// The narrowest contents take what they need, and leave the rest to the others.
void GridView::spreadColumns()
{
    if (m_spread.isEmpty() || !m_fitted)
        return;
    struct Wide
    {
        int column;
        int contents;
    };
    QList<Wide> wide;
    int room = viewport()->width();
    for (int column = 0; column < m_grid.columnCount(); ++column) {
        if (m_spread.contains(column) && !m_setByUser.contains(column))
            wide.append({column, sizeHintForColumn(column) + 2});
        else
            room -= columnWidth(column);
    }
    std::ranges::sort(wide, {}, &Wide::contents);
    m_fitting = true;
    for (qsizetype i = 0; i < wide.size(); ++i) {
        const auto share = static_cast<int>(room / (wide.size() - i));
        const int width = qMax(qMin(wide[i].contents, share), leastSpread);
        setColumnWidth(wide[i].column, width);
        room -= width;
    }
    m_fitting = false;
}

QList<int> GridView::selectedPositions() const
{
    QBitArray selected(m_grid.rows());
    for (const QItemSelectionRange &range : selectionModel()->selection())
        selected.fill(true, range.top(), range.bottom() + 1);
    QList<int> rows;
    for (int row = 0; row < selected.size(); ++row) {
        if (selected.testBit(row) && isShown(row))
            rows << row;
    }
    return rows;
}

void GridView::markRows(const QList<int> &rows)
{
    if (!rows.isEmpty() && std::ranges::none_of(rows, [this](int row) { return isShown(row); }))
        endFilter();
    const QItemSelection marked = rangesOf(rows);
    selectionModel()->select(marked, QItemSelectionModel::ClearAndSelect);
    if (!marked.isEmpty())
        scrollTo(marked.first().topLeft(), PositionAtCenter);
}

void GridView::goTo(int row, int column)
{
    if (!isShown(row))
        endFilter();
    const QModelIndex index = m_grid.index(row, column);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect |
                                                 QItemSelectionModel::Rows);
    scrollTo(index);
}

// All selected rows take the state that the current one does not have.
void GridView::tickSelection()
{
    QList<int> rows = selectedPositions();
    if (rows.isEmpty() && currentIndex().isValid())
        rows << currentIndex().row();
    if (rows.isEmpty())
        return;
    const int leading = rows.contains(currentIndex().row()) ? currentIndex().row() : rows.first();
    m_grid.setTicked(rows, !m_grid.ticked(leading));
}

void GridView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->key() == Qt::Key_C &&
             event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier))
        copySelection(Headings::With);
    else if (event->key() == Qt::Key_Space && isTickable())
        tickSelection();
    else
        moveByKey(event);
}

// What a key goes to is selected, so that it shows which row the next key is for; with Ctrl, the
// table itself would leave it unmarked.
void GridView::moveByKey(QKeyEvent *event)
{
    const bool isMove = event->key() == Qt::Key_Down || event->key() == Qt::Key_Up;
    if (isMove && selectionBehavior() == SelectRows && currentIndex().isValid() &&
        selectionModel()->selection().isEmpty()) {
        selectRow(currentIndex().row()); // the first key chooses, the next ones move
        Q_EMIT movedTo(currentIndex().row());
        return;
    }
    const int before = currentIndex().row();
    QTableView::keyPressEvent(event);
    if (currentIndex().isValid() && !isShown(currentIndex().row())) // a letter leads anywhere
        selectRow(nearestShown(before));
    const int now = currentIndex().row();
    if (isJump(event) && selectionBehavior() == SelectRows && now >= 0 &&
        !selectionModel()->isSelected(currentIndex()))
        selectRow(now);
    if (now >= 0 && now != before)
        Q_EMIT movedTo(now);
}

// The row under the right button is the current one when its menu comes up.
void GridView::mousePressEvent(QMouseEvent *event)
{
    m_rowAtPress = currentIndex().row();
    QTableView::mousePressEvent(event);
    const int now = currentIndex().row();
    if (event->button() == Qt::LeftButton || now < 0 || now == m_rowAtPress)
        return;
    m_rowAtPress = now;
    Q_EMIT movedTo(now);
}

// Only the left button clicks, and only where it came up at the row that it went down on.
void GridView::mouseReleaseEvent(QMouseEvent *event)
{
    bool wasClick = false;
    const auto watching =
        connect(this, &QAbstractItemView::clicked, this, [&wasClick] { wasClick = true; });
    QTableView::mouseReleaseEvent(event);
    disconnect(watching);
    const int now = currentIndex().row();
    if (!wasClick && now >= 0 && now != m_rowAtPress)
        Q_EMIT movedTo(now);
    m_rowAtPress = now;
}

// Between rows that have gone and rows that come there is nothing to show.
void GridView::paintEvent(QPaintEvent *event)
{
    if (m_isRefilled)
        return;
    m_paintedRow = -1;
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    paintFrozen(painter, event->rect());
    paintCurrentRow(painter);
    const QString text = m_grid.isEmpty()   ? m_emptyText
                         : shownRows() == 0 ? u"Süzmeye uyan satır yok."_s
                                            : QString();
    if (text.isEmpty())
        return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(20, 2, -20, -2),
                     Qt::AlignCenter | Qt::TextWordWrap, text);
}

// Among selected rows the frame stands out from their ground.
void GridView::paintCurrentRow(QPainter &painter)
{
    const QModelIndex current = currentIndex();
    if (!hasFocus() || selectionBehavior() != SelectRows || !current.isValid())
        return;
    const QRect row(0, rowViewportPosition(current.row()),
                    qMin(m_header->length(), viewport()->width()) - 1,
                    rowHeight(current.row()) - 1);
    const bool isSelected = selectionModel()->isSelected(current);
    painter.setPen(palette().color(isSelected ? QPalette::Text : QPalette::Highlight));
    painter.drawRect(row);
    if (!isSelected)
        return;
    painter.setPen(palette().color(QPalette::HighlightedText));
    painter.drawRect(row.adjusted(1, 1, -1, -1));
}

void GridView::freeze(int columns)
{
    m_header->setFrozen(columns);
}

QModelIndex GridView::indexAt(const QPoint &point) const
{
    const bool isFrozen = point.x() < m_header->frozenWidth();
    return QTableView::indexAt(isFrozen ? point - QPoint(m_header->offset(), 0) : point);
}

QRect GridView::visualRect(const QModelIndex &index) const
{
    QRect rect = QTableView::visualRect(index);
    if (index.isValid() && m_header->visualIndex(index.column()) < m_header->frozen())
        rect.translate(m_header->offset(), 0);
    return rect;
}

void GridView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QTableView::scrollTo(index, hint);
    const int hidden = m_header->frozenWidth() - visualRect(index).left();
    if (hidden > 0 && m_header->visualIndex(index.column()) >= m_header->frozen())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
}

// What stays can't be moved along with the rest of the picture.
void GridView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (dx == 0)
        return;
    viewport()->update();
    m_header->viewport()->update();
}

void GridView::paintFrozen(QPainter &painter, const QRect &area)
{
    const int end = m_header->frozenWidth();
    if (end == 0 || area.left() > end || m_grid.isEmpty())
        return;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const int last = rowAt(area.bottom()) < 0 ? m_grid.rows() - 1 : rowAt(area.bottom());
    const int first = qMax(rowAt(area.top()), 0);
    bool isAlternate = this->isAlternate(first);
    for (int row = first; row <= last; ++row) {
        if (!isShown(row))
            continue;
        const auto ground =
            std::exchange(isAlternate, !isAlternate) ? QPalette::AlternateBase : QPalette::Base;
        for (int visual = 0; visual < m_header->frozen(); ++visual) {
            const QModelIndex index = m_grid.index(row, m_header->logicalIndex(visual));
            option.rect = visualRect(index);
            painter.fillRect(option.rect, palette().brush(ground));
            option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
            itemDelegateForIndex(index)->paint(&painter, option, index);
        }
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(end - 1, area.top(), end - 1, area.bottom());
}

// The table counts only the rows in sight.
bool GridView::isAlternate(int row) const
{
    int above = row;
    for (int i = 0; i < qMin<qsizetype>(row, m_outOfSight.size()); ++i)
        above -= m_outOfSight.testBit(i) ? 1 : 0;
    return above % 2 == 1;
}

void GridView::shrinkWhenEmpty()
{
    m_shrinks = true;
    const auto show = [this] {
        m_header->setVisible(!m_grid.isEmpty());
        setHorizontalScrollBarPolicy(m_grid.isEmpty() ? Qt::ScrollBarAlwaysOff
                                                      : Qt::ScrollBarAsNeeded);
        updateGeometry();
    };
    show();
    connect(&m_grid, &QAbstractItemModel::modelReset, this, show);
    connect(&m_grid, &QAbstractItemModel::rowsInserted, this, show);
}

// A column of marks may bring a scroll bar up, where a row was that had been gone to.
void GridView::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    spreadColumns();
    if (!currentIndex().isValid())
        return;
    const int top = rowViewportPosition(currentIndex().row());
    if (top >= 0 && top < event->oldSize().height())
        showCurrentRow();
}

int GridView::leastHeight() const
{
    if (m_shrinks && model()->rowCount() == 0) // the grid itself may be gone, behind its screen
        return fontMetrics().height() + 8;
    return heightWith(rowsNeeded);
}

int GridView::heightWith(int rows) const
{
    return m_header->sizeHint().height() + rows * verticalHeader()->defaultSectionSize() +
           horizontalScrollBar()->sizeHint().height() + 2 * frameWidth();
}

QSize GridView::sizeHint() const
{
    return {QTableView::sizeHint().width(), leastHeight()};
}

QSize GridView::minimumSizeHint() const
{
    return {QTableView::minimumSizeHint().width(), leastHeight()};
}

void GridView::showCurrentRow()
{
    if (!currentIndex().isValid())
        return;
    const int across = horizontalScrollBar()->value();
    scrollTo(currentIndex());
    horizontalScrollBar()->setValue(across);
}

void GridView::setMarker(std::function<RowMark(int row)> marker)
{
    m_marker = std::move(marker);
    m_grid.setRowText(
        [view = QPointer(this)](int row) { return view ? spoken(view->markOf(row)) : QString(); });
}

void GridView::marksChanged(int pictures)
{
    m_hasMarks = pictures > 0 && m_marker;
    m_marks->setPictures(m_hasMarks ? pictures : 0);
    updateGeometries();
    viewport()->update();
}

RowMark GridView::markOf(int row) const
{
    const bool isThere = !m_isRefilled && row >= 0 && row < m_grid.rows();
    return m_hasMarks && isThere ? m_marker(row) : RowMark();
}

RowMark::Kind GridView::groundOfRow(int row) const
{
    if (std::exchange(m_paintedRow, row) != row)
        m_paintedGround = markOf(row).ground();
    return m_paintedGround;
}

void GridView::showMarkText(const QPoint &globalPlace, int row)
{
    const QString text = spoken(markOf(row)).toHtmlEscaped().replace(u'\n', u"<br>"_s);
    QToolTip::showText(globalPlace, text.isEmpty() ? text : u"<qt>%1</qt>"_s.arg(text), this);
}

bool GridView::viewportEvent(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || !m_hasMarks)
        return QTableView::viewportEvent(event);
    auto *help = static_cast<QHelpEvent *>(event);
    showMarkText(help->globalPos(), indexAt(help->pos()).row());
    return true;
}

void GridView::enter(int row)
{
    if (row >= 0 || !currentIndex().isValid()) {
        int entered = qMax(row, 0);
        if (!isShown(entered)) {
            const QList<int> selected = selectedPositions();
            entered = selected.isEmpty() ? nearestShown(entered) : selected.first();
        }
        selectionModel()->setCurrentIndex(m_grid.index(entered, 0), QItemSelectionModel::NoUpdate);
    }
    setFocus();
}

} // namespace kervan
