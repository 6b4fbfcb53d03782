#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <span>

namespace kervan {

// Templates and documents are handled in the bytes of Windows-1254, in which they are written: a
// placeholder is looked for byte by byte, which is the same as letter by letter.

/// A template of the program by its name ("xl1"), in document bytes. Unknown names end the program:
/// they are a fault of the program itself.
QByteArray sablon(const QString &name);

/// How values stand in a document.
enum class Values {
    AsTheyStand, ///< a "&" or a "<" of a cell makes a document that an XML reader refuses
    /// "&", "<" and ">" as XML asks, and without control characters but tabs and line feeds. A
    /// filling puts marks, each a single byte, in the places of these letters, so that it finds in
    /// values the very words that it finds otherwise; spellMarks() comes behind all fillings.
    AsXml,
};

/// The value in document bytes; as XML with marks.
QByteArray valueBytes(QStringView value, Values values);
/// The bytes with their marks spelled out.
QByteArray spellMarks(QByteArrayView bytes);

/// One step of a filling: every occurrence of `find` becomes `value`.
struct Fill
{
    QByteArray find;
    QByteArray value;
};

/// The template filled step by step. Each step works on the whole text as the steps before it left
/// it, values already put in included. Case counts; nothing is escaped.
QByteArray sablondoldur(QByteArray text, std::span<const Fill> fills);

/// The fills of one value per placeholder. The value of a placeholder in "<" and ">" is an element
/// and keeps them.
QList<Fill> fillsOf(const QList<QByteArray> &placeholders, std::span<const QString> values,
                    Values spelling = Values::AsTheyStand);

/// A template prepared for being filled many times with the same placeholders in the same order.
/// It gives the text that sablondoldur() gives, mostly at the cost of copying it.
class Sablon
{
public:
    Sablon(QByteArray text, QList<QByteArray> placeholders, Values spelling = Values::AsTheyStand);

    Values spelling() const { return m_spelling; }

    /// Appends the template filled with one value per placeholder to `out`.
    void doldur(std::span<const QString> values, QByteArray &out) const;
    /// The same with no value searched: what comes of it where none holds a word of the template.
    void yerlestir(std::span<const QString> values, QByteArray &out) const;

    /// The steps of a filling that search a value once it is put in.
    enum class Steps {
        Later, ///< those behind its own
        All,   ///< those of a further filling
    };
    /// Whether such a step could find something to change in what the values fill.
    bool mayChange(std::span<const QString> values, Steps steps) const;

private:
    void split(qsizetype placeholder);

    QByteArray m_text;
    QList<QByteArray> m_placeholders;
    Values m_spelling;
    // The template is literal 0, the value of slot 0, literal 1, ... and a last literal.
    QList<QByteArray> m_literals;
    qsizetype m_literalSize = 0; // of all
    QList<qsizetype> m_slots;    // the placeholder of each
    bool m_separates = true;     // no step could find anything across the border of a value
    bool m_lettered = true;      // each placeholder holds a small letter
};

/// What the records of a document are filled from.
struct Filling
{
    QList<QByteArray> placeholders;
    Sablon record;
    std::function<QStringList(int row)> values; ///< one per placeholder
};

} // namespace kervan
