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

/// Nearly every placeholder holds a small letter (a to z), which most values and all tags do not.
bool hasSmallLetter(const QString &text);

/// A template prepared for being filled many times with the same placeholders in the same order.
/// It gives the text that sablondoldur() gives, at the cost of copying it.
class Sablon
{
public:
    Sablon(QByteArray text, QList<QByteArray> placeholders);

    /// Appends the template filled with one value per placeholder to `out`.
    void doldur(std::span<const QString> values, QByteArray &out) const;

    /// Whether the filled template may hold a placeholder. If no value holds one it does not,
    /// unless one could be found across the border of a value.
    bool mayHoldPlaceholder(std::span<const QString> values) const;

private:
    // The template is literal 0, value of slot 0, literal 1, ... and a last literal.
    struct Slot
    {
        qsizetype placeholder;
    };

    void split(qsizetype placeholder);
    bool isBorderSafe(qsizetype slot, qsizetype firstPlaceholder) const;
    bool isSearchedAgain(std::span<const QString> values) const;

    QByteArray m_text;
    QList<QByteArray> m_placeholders;
    QList<QByteArray> m_literals;
    QList<Slot> m_slots;
    bool m_simple = true;   // no step can find anything across the border of a value
    bool m_lettered = true; // every placeholder holds a small letter
    bool m_isolated = true; // nor could any step of a second filling
};

} // namespace kervan
