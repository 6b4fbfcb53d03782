#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <span>

namespace kervan {

// Templates and documents are handled in the bytes of Windows-1254, in which they are written: a
// placeholder is looked for byte by byte, which is the same as letter by letter.

/// A template of the program by its name ("xl1"), in document bytes. Unknown names end the program:
/// they are a fault of the program itself.
QByteArray sablon(const QString &name);

/// One step of a filling: every occurrence of `find` becomes `value`.
struct Fill
{
    QByteArray find;
    QByteArray value;
};

/// The template filled step by step. Each step works on the whole text as the steps before it left
/// it, values already put in included. Case counts; nothing is escaped.
QByteArray sablondoldur(QByteArray text, std::span<const Fill> fills);

/// One fill per placeholder, with its value in document bytes.
QList<Fill> fillsOf(const QList<QByteArray> &placeholders, std::span<const QString> values);

/// A template prepared for being filled many times with the same placeholders in the same order.
/// It gives the text that sablondoldur() gives, mostly at the cost of copying it.
class Sablon
{
public:
    Sablon(QByteArray text, QList<QByteArray> placeholders);

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
    // The template is literal 0, the value of slot 0, literal 1, ... and a last literal.
    QList<QByteArray> m_literals;
    QList<qsizetype> m_slots; // the placeholder of each
    bool m_separates = true;  // no step could find anything across the border of a value
    bool m_lettered = true;   // each placeholder holds a small letter
};

} // namespace kervan
