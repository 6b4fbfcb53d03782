#include "frame/guidepage.h"

#include <QAbstractTextDocumentLayout>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextTable>

#include <array>
#include <utility>

namespace kervan {

using namespace Qt::StringLiterals;

namespace {

constexpr int widestColumn = 820;
constexpr int leastMargin = 18;
constexpr int lineHeight = 125;                       // of a hundred
constexpr std::array<int, 4> roomAbove{0, 6, 30, 20}; // a heading of the level

// Lets many changes be laid out once.
class Together
{
public:
    explicit Together(QTextDocument *document)
        : m_edit(document)
    {
        m_edit.beginEditBlock();
    }
    ~Together() { m_edit.endEditBlock(); }
    Together(const Together &) = delete;
    Together &operator=(const Together &) = delete;

private:
    QTextCursor m_edit;
};

bool isCode(const QTextBlockFormat &format)
{
    return format.hasProperty(QTextFormat::BlockCodeFence);
}

} // namespace

GuidePage::GuidePage(QWidget *parent)
    : QTextBrowser(parent)
{
    setFrameShape(QFrame::NoFrame);
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl &link) {
        if (link.path().isEmpty()) // a place of the page, and no address
            goTo(link.fragment());
    });
    m_soon.setSingleShot(true);
    m_soon.setInterval(80);
    connect(&m_soon, &QTimer::timeout, this, &GuidePage::fit);
}

bool GuidePage::open(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // Made ready before it is shown: while it is, each change would be laid out.
    auto *text = new QTextDocument(this);
    QFont larger = font();
    larger.setPointSizeF(larger.pointSizeF() * 1.08);
    text->setDefaultFont(larger);
    text->setMarkdown(QString::fromUtf8(file.readAll()));
    findPictures(text, path);
    dress(text);
    setDocument(text);
    m_column = 0;
    fit();
    return !m_headings.isEmpty();
}

QVariant GuidePage::loadResource(int, const QUrl &)
{
    return {};
}

QString GuidePage::anchorOf(const QString &title)
{
    QString anchor;
    for (const QChar c : title.trimmed().toLower()) {
        if (c == u' ')
            anchor += u'-';
        else if (c.isLetterOrNumber() || c.isMark() || c == u'-' || c == u'_')
            anchor += c;
    }
    return anchor;
}

QStringList GuidePage::pictures() const
{
    QStringList names;
    for (const Picture &picture : m_pictures)
        names << picture.name;
    return names;
}

void GuidePage::goTo(const QString &anchor)
{
    if (m_soon.isActive())
        fit();
    if (anchor != section()) {
        m_visits.resize(m_visit + 1);
        m_visits << Visit{anchor};
        visit(m_visit + 1);
    }
    scrollToAnchor(anchor);
}

void GuidePage::showCursorAmidst()
{
    QScrollBar *bar = verticalScrollBar();
    bar->setValue(bar->value() + cursorRect().center().y() - viewport()->height() / 3);
}

void GuidePage::visit(qsizetype number)
{
    if (number < 0 || number >= m_visits.size())
        return;
    if (m_visit >= 0)
        m_visits[m_visit].scrolled = verticalScrollBar()->value();
    m_visit = number;
    verticalScrollBar()->setValue(m_visits[number].scrolled);
    Q_EMIT backwardAvailable(number > 0);
    Q_EMIT forwardAvailable(number < m_visits.size() - 1);
    Q_EMIT sectionChanged();
}

void GuidePage::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    if (m_column > 0)
        m_soon.start();
    else
        fit();
}

void GuidePage::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_headings.isEmpty())
        dress(document());
}

void GuidePage::dress(QTextDocument *document)
{
    m_headings.clear();
    const Together edit(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextCursor at(block);
        QTextBlockFormat form;
        if (!block.text().contains(QChar::ObjectReplacementCharacter)) // of a picture
            form.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
        const bool isInTable = at.currentTable();
        const QTextBlockFormat now = block.blockFormat();
        const bool goesOn = isCode(now) && isCode(block.next().blockFormat());
        if (!isInTable)
            form.setBottomMargin(goesOn ? 0 : block.textList() ? 4 : 9);
        if (now.hasProperty(QTextFormat::BlockQuoteLevel) || isCode(now))
            form.setBackground(palette().alternateBase());
        if (isCode(now))
            form.setNonBreakableLines(false); // the column is no wider for them
        if (const int level = now.headingLevel(); level > 0) {
            const auto size = static_cast<std::size_t>(qMin(level, 3));
            form.setTopMargin(roomAbove[size]);
            dressHeading(block, level);
        }
        at.mergeBlockFormat(form);
    }
    dressTables(document);
}

void GuidePage::dressHeading(const QTextBlock &block, int level)
{
    const QString anchor = anchorOf(block.text());
    m_headings << Heading{block.text(), anchor, level};
    QTextCharFormat form;
    form.setAnchor(true);
    form.setAnchorNames({anchor});
    form.setForeground(level < 3 ? palette().link() : palette().text());
    QTextCursor whole(block);
    whole.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    whole.mergeCharFormat(form);
}

void GuidePage::dressTables(const QTextDocument *document)
{
    for (QTextFrame *frame : document->rootFrame()->childFrames()) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat form = table->format();
        form.setBorderCollapse(true);
        form.setBorder(1);
        form.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        form.setBorderBrush(palette().mid());
        form.setCellSpacing(0);
        form.setCellPadding(5);
        form.setTopMargin(4);
        form.setBottomMargin(14);
        form.setRightMargin(2); // for its border
        table->setFormat(form);
        for (int column = 0; column < table->columns(); ++column) {
            QTextTableCell cell = table->cellAt(0, column);
            QTextCharFormat head = cell.format();
            head.setBackground(palette().alternateBase());
            cell.setFormat(head);
        }
    }
}

void GuidePage::findPictures(const QTextDocument *document, const QString &path)
{
    m_pictures.clear();
    const QDir folder = QFileInfo(path).dir();
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            const QTextImageFormat image = fragment.charFormat().toImageFormat();
            if (image.isValid())
                m_pictures << Picture{
                    fragment.position(), image.name(),
                    QImage(folder.filePath(image.name())).convertToFormat(QImage::Format_RGB32)};
        }
    }
}

void GuidePage::fit()
{
    m_soon.stop();
    const int room = viewport()->width();
    const int margin = qMax(leastMargin, (room - widestColumn) / 2);
    const QTextBlock inSight = cursorForPosition({margin, 4}).block();
    {
        const Together edit(document());
        QTextFrameFormat frame = document()->rootFrame()->frameFormat();
        frame.setLeftMargin(margin);
        frame.setRightMargin(margin);
        document()->rootFrame()->setFrameFormat(frame);
        fitPictures(room - 2 * margin);
    }
    verticalScrollBar()->setValue(
        qRound(document()->documentLayout()->blockBoundingRect(inSight).top()));
}

// What the text draws it does not smooth, so it is given the very pixels.
void GuidePage::fitPictures(int column)
{
    if (column == std::exchange(m_column, column))
        return;
    for (const Picture &picture : std::as_const(m_pictures)) {
        const int width = qMin(column, picture.whole.width());
        const int pixels = qMin(qRound(width * devicePixelRatioF()), picture.whole.width());
        if (pixels <= 0)
            continue;
        QImage shown = picture.whole.scaledToWidth(pixels, Qt::SmoothTransformation);
        shown.setDevicePixelRatio(double(pixels) / width);
        document()->addResource(QTextDocument::ImageResource, QUrl(picture.name), shown);
        QTextCursor at(document());
        at.setPosition(picture.position);
        at.setPosition(picture.position + 1, QTextCursor::KeepAnchor);
        QTextImageFormat form = at.charFormat().toImageFormat();
        form.setWidth(width);
        form.setHeight(shown.deviceIndependentSize().height());
        at.setCharFormat(form);
    }
}

} // namespace kervan
