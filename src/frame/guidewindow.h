#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QSplitter;
class QTreeWidget;

namespace kervan {

class GuidePage;

/// The user guide beside the program: the page, what is in it, and a search. It holds nobody up and
/// is held up by no dialog.
class GuideWindow : public QWidget
{
    Q_OBJECT

public:
    GuideWindow();

    /// Whether the guide is there.
    bool open(const QString &path);
    /// Whether it has not been opened.
    bool isEmpty() const;
    /// Comes forward with the section of this anchor; without one, as it was left.
    void showSection(const QString &anchor);

Q_SIGNALS:
    void blocked();

protected:
    bool event(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    QWidget *searchBar();
    void fillContents();
    void markSection();
    void search(bool backward);
    /// A dialog that blocks the program lets a window of its own be used.
    void standWithDialog();

    GuidePage *m_page;
    QTreeWidget *m_contents;
    QLineEdit *m_wanted;
    QLabel *m_told;
    QSplitter *m_panes;
};

} // namespace kervan
