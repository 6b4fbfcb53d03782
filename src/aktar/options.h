#pragma once

#include <QDate>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

namespace kervan {

/// An option of the command. Its name is a key of recipes too.
struct Option
{
    QString name;
    /// What its value is, in capitals; "ekle|guncelle" for one of these words; empty for an option
    /// that is on or off.
    QString value = {};
    QString text;      ///< what it does, a sentence
    bool many = false; ///< may be given several times, each of which counts
};

/// What was given: on the command line, else in the recipe. What a recipe gives holds for a
/// command only as far as the command line is silent about it.
class Options
{
public:
    /// A value of a name; the ones before stay only where several are wanted.
    void give(const QString &name, const QString &value) { m_values[name] << value; }

    bool isOn(const QString &name) const;
    bool has(const QString &name) const { return m_values.contains(name); }
    /// The last one that was given; empty without one.
    QString value(const QString &name) const { return m_values.value(name).value(last(name)); }
    QStringList values(const QString &name) const { return m_values.value(name); }
    QStringList names() const { return m_values.keys(); }
    /// A whole number from `least` on, `otherwise` where none was given; anything else is a
    /// Failure.
    int number(const QString &name, int otherwise, int least = 0) const;

    QStringList sources;

private:
    qsizetype last(const QString &name) const { return m_values.value(name).size() - 1; }

    QHash<QString, QStringList> m_values;
};

/// The day that a value of an option means: "07.03.2024", "bugun" or "dun". Anything else is a
/// Failure.
QDate dayOf(const QString &option, const QString &value, QDate today);
/// A Failure where the days of an option are in the wrong order.
void checkOrder(const QString &option, QDate first, QDate last);

/// The options that all commands take, those by which a transfer only looks, and those of the
/// watched folder.
const QList<Option> &commonOptions();
const QList<Option> &lookOptions();
const QList<Option> &watchOptions();

/// Takes the arguments behind the command apart by the options that it knows. A Failure says what
/// was used wrongly.
Options readOptions(const QString &command, const QStringList &arguments,
                    const QList<Option> &known);

/// Adds what a recipe says to what was given already, which it can't change: lines
/// "anahtar = değer" in front of the first section hold for all commands, those below "[fatura]"
/// for one; `sections` are those that count. UTF-8 or Windows-1254; a line that can't be read and a
/// key that none of these commands knows is a Failure that names file and line.
void addRecipe(Options &options, const QString &path, const QStringList &sections,
               const QList<Option> &known);

} // namespace kervan
