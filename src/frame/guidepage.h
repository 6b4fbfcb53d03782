#pragma once

#include <QHash>
#include <QImage>
#include <QList>
#include <QString>
#include <QTextBrowser>
#include <QTimer>

class QTextBlock;

namespace kervan {

/// The text of the guide: a Markdown file whose headings are places to go to, in the colours of the
/// program, and no wider than reads well. Nothing but that file and its pictures is ever opened.
class GuidePage : public QTextBrowser
{
    Q_OBJECT

public:
    struct Heading
    {
        QString title;
        QString anchor;
        int level;
    };

    explicit GuidePage(QWidget *parent = nullptr);

    /// Whether the file could be read.
    bool open(const QString &path);
    const QList<Heading> &headings() const { return m_headings; }
    /// The names of the pictures, as the file spells them.
    QStringList pictures() const;
    void goTo(const QString &anchor);
    /// Scrolls what was found to where its surroundings are seen too.
    void showCursorAmidst();
    /// The anchor that was gone to last.
    QString section() const { return m_visits.value(m_visit).anchor; }

    void backward() override { visit(m_visit - 1); }
    void forward() override { visit(m_visit + 1); }
    QVariant loadResource(int type, const QUrl &name) override;

    /// What a heading is called in a link: small letters, blanks as "-", no other marks.
    static QString anchorOf(const QString &title);

Q_SIGNALS:
    void sectionChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Picture
    {
        int position; ///< in the text
        QString name;
        QImage whole;
    };
    struct Visit
    {
        QString anchor;
        int scrolled = 0; ///< to where it was left
    };

    void visit(qsizetype number);
    /// Gives the text its looks: Markdown knows none.
    void dress(QTextDocument *document);
    void dressHeading(const QTextBlock &block, int level);
    void dressTables(const QTextDocument *document);
    void findPictures(const QTextDocument *document, const QString &path);
    /// Fits margins and pictures to the room that there is, and keeps what was read in sight.
    void fit();
    void fitPictures(int column);

    QList<Heading> m_headings;
    QList<Picture> m_pictures;
    QList<Visit> m_visits;
    qsizetype m_visit = -1;
    QTimer m_soon; // many sizes come while a window is drawn larger
    int m_column = 0;
};

} // namespace kervan
