#pragma once

#include "check/checks.h"
#include "check/readback.h"
#include "check/screens/checkedlist.h"
#include "check/writtendocuments.h"
#include "controls/rowmarks.h"

#include <QDateTime>
#include <QObject>
#include <QTimer>

namespace kervan {

class DocumentPage;
class FindingsPage;
class TotalsLine;

/// Looks after the list of a transfer window beside the work: marks in front of its rows what the
/// checks found and what documents hold already, shows only rows with findings on demand, and reads
/// each document back that was written.
class ListWatch : public QObject
{
    Q_OBJECT

public:
    ListWatch(CheckedList list, FindingsPage *findings, DocumentPage *page, TotalsLine *line);

    const WrittenDocuments &documents() const { return m_documents; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // A list of the window, by the place where its rows stand in the documents.
    enum Which { First, Second };
    RowMark markOf(const GridView *view, Which list, int row) const;
    void follow(Grid &rows, GridView *view, Which list);
    void addRules();
    void showMarks();
    void showMarksOf(GridView *view, Which list) const;
    void showOnlyFound(bool only);
    void lookForRows();
    void readFolders();
    void takeWritten();
    void takeReadBack(const ReadBack &result);
    void untickWritten(Grid &rows, Which list);

    CheckedList m_list;
    FindingsPage *m_findings;
    DocumentPage *m_page;
    TotalsLine *m_line;
    WrittenDocuments m_documents;
    ReadBackBeside m_readBack, m_slipsReadBack;
    QStringList m_refuted; // of what was written last
    QStringList m_refutedFiles;
    QTimer m_soon;               // the list has changed
    qsizetype m_writtenSeen = 0; // of the notes
};

} // namespace kervan
