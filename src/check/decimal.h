#pragma once

#include <QByteArrayView>
#include <QHashFunctions>
#include <QString>

#include <compare>
#include <optional>

namespace kervan {

/// An amount as it is spelled, held exactly: sums and comparisons of it round nothing. It reaches
/// to 13 digits before the mark and 18 behind it, and ten million such amounts can be summed.
class Decimal
{
public:
    constexpr Decimal() = default; // zero

    /// The amount that a cell spells: "," before the decimals, "." between groups of the whole
    /// part, blanks around it, as number() reads it. Nothing where the text spells none or one
    /// beyond the reach.
    static std::optional<Decimal> ofCell(QStringView text);
    /// The amount that a document spells: "." before the decimals and no group marks.
    static std::optional<Decimal> ofDocument(QByteArrayView text);

    /// a * b / 10^decimals; nothing where that needs more than 18 decimals or is beyond the reach.
    static std::optional<Decimal> product(qint64 a, qint64 b, int decimals);
    /// The amount times factor / 10^decimals, cut behind the 18th decimal; nothing beyond the
    /// reach.
    std::optional<Decimal> times(qint64 factor, int decimals) const;

    Decimal &operator+=(Decimal other)
    {
        m_units += other.m_units;
        return *this;
    }
    Decimal &operator-=(Decimal other)
    {
        m_units -= other.m_units;
        return *this;
    }
    friend Decimal operator+(Decimal a, Decimal b) { return a += b; }
    friend Decimal operator-(Decimal a, Decimal b) { return a -= b; }
    Decimal operator-() const { return Decimal() - *this; }
    friend constexpr auto operator<=>(Decimal, Decimal) = default; // NOLINT(modernize-use-nullptr)
    friend size_t qHash(Decimal value, size_t seed = 0)
    {
        return qHashMulti(seed, static_cast<quint64>(value.m_units),
                          static_cast<quint64>(value.m_units >> 64));
    }

    /// Half a unit of the last decimal goes away from zero.
    Decimal rounded(int places) const;

    bool isZero() const { return m_units == 0; }
    bool isNegative() const { return m_units < 0; }

    /// As lists spell it: "1.234,56", with so many decimals at least and all that it has.
    QString text(int leastDecimals = 2) const;

private:
    template<class Text>
    static std::optional<Decimal> read(Text text, char mark, bool grouped);

    __extension__ using Units = __int128;
    Units m_units = 0; // of 10 to the -18
};

} // namespace kervan
