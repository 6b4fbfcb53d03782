#pragma once

#include "base/notes.h"

#include <QFrame>
#include <QLabel>

class QPlainTextEdit;
class QToolButton;

namespace kervan {

/// A label of one line that shows as much of its text as there is room for.
class CutLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// Shows the folder that holds the file; a desktop that can't is told in the notes.
void showFolderOf(const QString &path, Notes &notes);

/// The notes of a screen, below its caption: what failed in one line and, on demand, in full; and
/// what there is instead, as links, and
/// below that the files that were written, with the way to their folder. It takes no room while
/// there is nothing to tell.
class NoteStrip : public QWidget
{
    Q_OBJECT

public:
    explicit NoteStrip(Notes &notes);

    /// Something beside the screen's own steps.
    void tell(const QString &text) { m_notes.add(text); }

private:
    QFrame *makeFaults();
    QFrame *makeWritten();
    void showNotes();
    void showChoices();

    Notes &m_notes;
    CutLabel *m_text;
    QToolButton *m_more;
    QPlainTextEdit *m_details;
    QWidget *m_choices;
    CutLabel *m_writtenText;
    QFrame *m_faults;
    QFrame *m_written;
    QStringList m_shownChoices;
    QString m_told; // to those who do not see it
};

} // namespace kervan
