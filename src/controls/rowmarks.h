#pragma once

#include <QColor>
#include <QHeaderView>

class QPalette;

namespace kervan {

class GridView;

/// What stands in front of a row, and the reason for it.
struct RowMark
{
    enum Kind {
        None,
        Warning,
        Error,
        Same,   ///< the document written before has it just so
        Differs ///< it has it with other values
    };
    Kind kind = None;    ///< a warning or an error
    QString text = {};   ///< plain, of one or more lines
    Kind written = None; ///< whether a document has it

    /// Which of both tints the row.
    Kind ground() const { return kind == None ? written : kind; }
};

/// What a reader says of a marked row: the kind, where the text alone does not tell it, and the
/// text; empty for none.
QString spoken(const RowMark &mark);

/// The ground of a row that is not selected; no colour where the list's own ground stays, as in
/// high contrast, where the picture alone tells.
QColor groundOf(const QPalette &palette, RowMark::Kind kind, bool isTicked);

/// The narrow column in front of a list with the marks of its rows: one picture wide, or two where
/// there are faults as well as rows that documents have. Marks are asked of the list when they come
/// into view.
class MarkHeader : public QHeaderView
{
    Q_OBJECT

public:
    explicit MarkHeader(GridView *view);

    QSize sizeHint() const override;
    /// How many pictures there is room for; none where the column is away.
    void setPictures(int count);

protected:
    void initStyleOptionForIndex(QStyleOptionHeader *option, int row) const override;
    void paintSection(QPainter *painter, const QRect &rect, int row) const override;
    bool viewportEvent(QEvent *event) override;

private:
    GridView *m_view;
    int m_count = 0;
};

} // namespace kervan
