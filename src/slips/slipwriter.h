#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "base/ports.h"
#include "logoxml/template.h"
#include "slips/columns.h"
#include "slips/slipcodes.h"

#include <QDate>
#include <QList>
#include <QString>

namespace kervan {

/// What a document is written from.
struct SlipSource
{
    const Grid &grid;
    SlipCodes codes;
    bool salesman = false; // takes the templates that carry one
    Values spelling = Values::AsTheyStand;
};

/// The row in hand of a document.
class SlipRow
{
public:
    explicit SlipRow(const SlipSource &source)
        : m_source(source)
    {
    }

    void moveTo(int row) { m_row = row; }
    const QString &cell(int column) const { return m_source.grid.cell(m_row, column); }
    const SlipCodes &codes() const { return m_source.codes; }

    /// The date of the row in the spellings of documents.
    struct Date
    {
        QString tarih, ay, ikiHaneliAy, yil;
    };
    /// A cell that spells no date is a Failure that names its row.
    const Date &date() const;

private:
    const SlipSource &m_source;
    int m_row = 0;
    mutable QString m_dateText; // the date spelled last: most rows of a list share one
    mutable Date m_date;
};

/// The day of a movement's cell; a time behind it is passed over, and a text that spells no day is
/// a Failure.
QDate movementDay(const QString &cell);

/// A placeholder of a document and the value that fills it.
class SlipWord
{
public:
    /// Of a cell's text, by a treatment or as it stands.
    SlipWord(QStringView placeholder, int column, QString (*treat)(QStringView text) = nullptr)
        : m_placeholder(placeholder)
        , m_column(column)
        , m_treat(treat)
    {
    }
    /// Of something else.
    SlipWord(QStringView placeholder, QString (*value)(const SlipRow &row))
        : m_placeholder(placeholder)
        , m_value(value)
    {
    }

    QStringView placeholder() const { return m_placeholder; }
    QString text(const SlipRow &row) const
    {
        if (m_value)
            return m_value(row);
        const QString &text = row.cell(m_column);
        return m_treat ? m_treat(text) : text;
    }

private:
    QStringView m_placeholder;
    int m_column = 0;
    QString (*m_treat)(QStringView text) = nullptr;
    QString (*m_value)(const SlipRow &row) = nullptr;
};

/// The kinds of slips that Logo takes, by their templates.
enum class SlipKind { None, Note, Cheque, Cash, Bank, Card };

/// Which export a list was filled from last, on the screen that reads two.
enum class ReadKind { None, Cash, Card };

enum class SlipSequenceKind { None, Cash, Bank };

/// A document of slips: its rows, and the values in the order in which they are filled behind
/// saat, dakika and saniye. The order is part of the format.
struct SlipDocument
{
    QString title; // of the dialog that asks for its name
    SlipKind kind = SlipKind::None;
    QString rowClass = {}; // takes the rows of this class of a text export; else the ticked ones
    bool ofBankList = false;
    ReadKind needs = ReadKind::None;
    bool barCountsAllRows = !rowClass.isEmpty();      // and not only those that it takes
    SlipSequenceKind stores = SlipSequenceKind::None; // once it is written
    QList<SlipWord> words = {};

    bool takesTicked() const { return rowClass.isEmpty(); }
    bool takes(const Grid &grid, int row) const
    {
        return takesTicked() ? grid.ticked(row)
                             : grid.cell(row, MetinHareket::IslemTipi) == rowClass;
    }
};

/// What the document's records are filled from, at the clock's time; the source must outlive it. A
/// document without a template is a Failure.
Filling fillingOf(const SlipDocument &document, const SlipSource &source, const Clock &clock);

/// Writes the document to the file and gives the number of its slips. The first row or step that
/// fails is a Failure, and no file is written.
int writeSlips(const SlipDocument &document, const SlipSource &source, const Clock &clock,
               ProgressField &progress, const QString &path);

} // namespace kervan
