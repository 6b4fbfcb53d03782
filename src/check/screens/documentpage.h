#pragma once

#include "base/grid.h"
#include "base/ports.h"
#include "check/beside.h"
#include "check/documenttable.h"

#include <QWidget>

class QLabel;

namespace kervan {

class GridView;

/// What stands in a document: its records in a table, empty fields in red, above them the places
/// that an XML reader stumbles over. Any document of the program can be opened in it.
class DocumentPage : public QWidget
{
    Q_OBJECT

public:
    explicit DocumentPage(FileDialogs &dialogs, QWidget *parent = nullptr);

    using QWidget::show;
    /// Reads the document beside the work and shows it.
    void show(const QString &path);
    /// Where the dialog of "Belge aç" starts.
    void setFolder(const QString &folder) { m_folder = folder; }
    /// Asks for a document and shows it.
    void openDocument();
    const QString &path() const { return m_path; }
    bool isReading() const { return m_reader.isRunning(); }

Q_SIGNALS:
    /// A document was read and is shown.
    void shown(const QString &summary);
    /// The user has asked for this one.
    void chosen(const QString &path);

private:
    void fill(const DocumentTable &table);

    FileDialogs &m_dialogs;
    QString m_folder;
    QString m_path;
    Beside m_reader;
    Grid m_records, m_problems;
    QLabel *m_summary;
    GridView *m_recordView, *m_problemView;
};

} // namespace kervan
