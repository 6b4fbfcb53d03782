#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/ports.h"

#include <QDate>
#include <QString>

namespace kervan {

/// Which export a list was filled from last, on the screen that reads two.
enum class ReadKind { None, Cash, Card };

/// The row in hand of a document, and the codes of the screen.
class SlipRow
{
public:
    SlipRow(const Grid &grid, QString kskod, QString bankahesapno1)
        : m_grid(grid)
        , m_kskod(std::move(kskod))
        , m_bankahesapno1(std::move(bankahesapno1))
    {
    }

    void moveTo(int row) { m_row = row; }
    const QString &cell(int column) const { return m_grid.cell(m_row, column); }
    const QString &kskod() const { return m_kskod; }
    const QString &bankahesapno1() const { return m_bankahesapno1; }

    /// The date of cell 1 in the spellings of documents.
    struct Date
    {
        QString tarih, ay, ikiHaneliAy, yil;
    };
    /// A cell that spells no date is a Failure that names its row.
    const Date &date() const;

private:
    const Grid &m_grid;
    QString m_kskod;
    QString m_bankahesapno1;
    int m_row = 0;
    mutable QString m_dateText; // the date spelled last: most rows of a list share one
    mutable Date m_date;
};

/// The kinds of slips that Logo takes, by their templates.
enum class SlipKind { None, Note, Cheque, Cash, Bank, Card };

enum class SlipSequenceKind { None, Cash, Bank };

/// A document of slips: its rows, and the values in the order in which they are filled behind
/// saat, dakika and saniye. The order is part of the format.
struct SlipDocument
{
    struct Word
    {
        QStringView placeholder;
        QString (*value)(const SlipRow &row);
    };

    QString title; // of the dialog that asks for its name
    SlipKind kind = SlipKind::None;
    QString rowClass = {}; // takes the rows whose cell 1 is this; without it the ticked ones
    bool ofBankList = false;
    ReadKind needs = ReadKind::None;
    bool barCountsAllRows = false;
    SlipSequenceKind stores = SlipSequenceKind::None; // once it is written
    QList<Word> words = {};

    bool takesTicked() const { return rowClass.isEmpty(); }
    bool takes(const Grid &grid, int row) const
    {
        return takesTicked() ? grid.ticked(row) : grid.cell(row, 1) == rowClass;
    }
};

// From workbooks.
const SlipDocument &exeldenkasanakitkaydet();
const SlipDocument &exeldenbankafisikaydet();
const SlipDocument &exelkasanakitkaydet();
const SlipDocument &exelkredikartkaydet();
// From text exports.
const SlipDocument &kredikartkaydet();
const SlipDocument &senetkaydet();
const SlipDocument &cekkaydet();
const SlipDocument &kasanakitkaydet();
/// Has no template, so that writing it always fails; kasanakitkaydet() is the one that serves cash.
const SlipDocument &nakitkaydet();

/// Writes the document of the grid's rows to the file. `salesman` is for the templates that carry
/// one. The first row or step that fails is a Failure, and no file is written.
void writeSlips(const SlipDocument &document, bool salesman, const Grid &grid, SlipRow row,
                const Clock &clock, ProgressField &progress, const QString &path);

} // namespace kervan
