#pragma once

#include "base/fields.h"
#include "base/grid.h"
#include "store/program.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace kervan {

/// An input field of a definition screen and the table column that it edits.
struct DefinitionField
{
    enum Kind { Text, HiddenText, Check };

    QString name; ///< of its control
    QString label;
    QString column;
    Kind kind = Text;
};

/// A column of a definition screen's list.
struct DefinitionColumn
{
    QString heading;
    int twips;
    QString column;
};

/// All that tells one definition screen from another. Statements are given by their fixed
/// beginnings; the values follow in the order of the columns named.
struct Definition
{
    QString screen;
    QString caption;
    QString listCaption;
    QString database;
    QString table;
    QString insert;
    QStringList insertColumns; ///< the table's columns behind `id`; one without a field is empty
    QString update;
    QStringList updateColumns; ///< the first one stands in `update` already
    QString updateEnd;
    QString remove;
    QList<DefinitionField> fields;
    QList<DefinitionColumn> grid;

    /// Which open screen loads its definitions again when this one closes, changed or not, and
    /// whether at any closing or only at that by the button.
    enum Refresh { Nothing, InvoiceScreen, InvoiceScreenByButton, StockScreen };
    Refresh refresh = Nothing;
    bool hasGeneralVat = false; ///< the field `genkdv` outside both frames
};

/// The eight definition screens.
const QList<Definition> &definitions();
/// The one of a screen's word, or null.
const Definition *definitionOf(const QString &screen);

/// A definition screen: a list of a table's rows, and one record of it at a time. No step shows its
/// failure; a row that could not be written is simply not there after the list is loaded again.
class DefinitionScreen
{
public:
    DefinitionScreen(Program &program, const Definition &definition);

    const Definition &definition() const { return m_definition; }
    Grid l1; ///< a row's tag is the `id` of its record
    TextField &field(int index) { return *m_fields[static_cast<std::size_t>(index)]; }
    CheckField c1;
    TextField genkdv{QStringLiteral("18")};
    CheckField kayitta; ///< the record frame is showing, not the list frame

    void yukle();
    void yeni();
    /// Takes the fields from the list's row, not from the table; without a row they stay empty.
    void degistir(int row);
    /// Writes the record: a new one, or the one of the selected row.
    void kaydet(int row);
    void iptal();
    void sil(int row);
    /// The general VAT rate was typed in: each keystroke is written.
    void genkdvdegisti();

private:
    QString valueOf(const QString &column) const;
    void leaveRecord();
    QString path() const { return m_program.path(m_definition.database); }

    Program &m_program;
    const Definition &m_definition;
    std::vector<std::unique_ptr<TextField>> m_fields;
    QString durum; // "1" while a new record is edited, "2" while an existing one is
};

} // namespace kervan
