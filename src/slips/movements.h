#pragma once

#include "base/failure.h"
#include "base/grid.h"

#include <QString>

#include <array>

namespace kervan {

/// A running number for each class code. It goes on across the reads of one screen.
class IslemSira
{
public:
    /// The next number of the code; empty, and nothing counted, for a code that is no class.
    QString islemsira(QStringView field);

private:
    std::array<float, 4> m_counters{};
};

/// Adds one line of the text export as a row of metinHareketColumns(). What a short line lacks is
/// empty.
void addMovementLine(Grid &l1, QStringView line, IslemSira &sira);

/// The amount of a Düzey export (1,234.5) in the spelling of its list (1.234,5000).
QString tutarduzelt1(QString amount);

/// The last number given to a kind of slip: kept in a side file, which is read with each source
/// and written when a document of these slips was.
class SlipSequence
{
public:
    /// How the stored number is spelled: as a number is printed, with a blank before and behind
    /// it, or bare. Both are read back alike.
    enum Spelling { Printed, Bare };

    SlipSequence(QString path, Spelling spelling)
        : m_path(std::move(path))
        , m_spelling(spelling)
    {
    }

    /// Takes the stored number; without a readable one the first slip gets number 1. Gives why a
    /// file that is there could not be read.
    std::optional<Failure> load();
    /// Reads what the file holds and leaves the numbers as they are. Gives the same.
    std::optional<Failure> look();
    double next() { return ++m_last; }
    /// Writes the last number given out; a Failure names the file.
    void store() const;
    /// What the file held when it was read last.
    const QString &stored() const { return m_stored; }

private:
    QString m_path;
    Spelling m_spelling;
    QString m_stored;
    double m_last = 0;
};

/// A slip number: "NT" and 7 give NT000007.
QString slipNumber(QStringView prefix, double number);

} // namespace kervan
