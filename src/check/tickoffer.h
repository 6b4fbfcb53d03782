#pragma once

#include "check/rememberedticks.h"

#include <QObject>

#include <functional>
#include <optional>

namespace kervan {

/// Offers the ticks that a list had before it was read anew. What was ticked when rows were taken
/// out of the list is not offered: those were meant to go.
class TickOffer : public QObject
{
    Q_OBJECT

public:
    /// `shape` is asked again whenever rows are others.
    TickOffer(Grid &list, std::function<ListShape()> shape, QObject *parent = nullptr);

    /// How many rows would be ticked; none where there is nothing to offer.
    int rows() const;
    void accept();

    /// The ticks as they stand, to be offered when the list comes back elsewhere.
    RememberedTicks ticks() const;
    /// Offers ticks of elsewhere in the place of those that the list had.
    void set(const RememberedTicks &ticks);

Q_SIGNALS:
    void changed();

private:
    void forgetRows();
    void forgetTicked(int first, int last);

    Grid &m_list;
    std::function<ListShape()> m_shape;
    RememberedTicks m_ticks;
    bool m_isTouched = false;                  // the ticks since the last read are the user's
    mutable std::optional<QList<int>> m_found; // in the list; looked for when it is asked
};

} // namespace kervan
