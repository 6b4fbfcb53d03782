#pragma once

#include "base/statement.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace kervan {

/// An input field of a definition screen and the table column that it edits. A box is written as
/// "1" or "0".
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
    QString tickedWord = {}; ///< of a box: shown for "1", and nothing for any other value

    /// The cell of a value.
    QString shown(const QString &value) const;
};

/// A value beside the records: the one row of a table of its own in the same file. Each keystroke
/// in its field is written.
struct SideValue
{
    QString name; ///< of its control
    QString label;
    QString preset;
    QString table;
    QString column;

    Statement select() const;
    Statement update(const QString &value) const;
};

/// All that tells one definition screen from another.
struct Definition
{
    /// Gives the value that a column takes.
    using ValueOf = std::function<QString(const QString &column)>;

    QString screen;
    QString caption;
    QString listCaption;
    QString database;
    QString table;
    QStringList columns;            ///< of the table behind `id`; one without a field stays empty
    QStringList updateColumns = {}; ///< those that a change writes, unless it is `columns`
    QString setWord = QStringLiteral("set"); ///< as an update spells it
    QString whereWord = QStringLiteral("Where");
    QList<DefinitionField> fields;
    QList<DefinitionColumn> grid;
    std::optional<SideValue> sideValue = {};
    QString sourceColumn = {}; ///< holds what sources call a record, if they name it

    // The statements, word for word as they reach the engine.
    Statement select() const;
    Statement insert(const ValueOf &valueOf) const;
    Statement update(const ValueOf &valueOf, const QString &id) const;
    Statement remove(const QString &id) const;
};

/// The eight definition screens.
const QList<Definition> &definitions();
/// The one of a screen's word, or null.
const Definition *definitionOf(QStringView screen);

} // namespace kervan
