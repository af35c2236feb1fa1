#include "apps/common/history/Stretches.h"

#include "apps/common/history/Wander.h"

#include <cmath>
#include <initializer_list>

namespace Host {

using Nodes::Timestamp;

Stretches::Stretch Stretches::ofSlot(std::int64_t slot) const
{
    if (Wander::even(m_seed, 3 * slot) >= m_habit.chance)
        return {};
    const double length = Wander::even(m_seed, 3 * slot + 1);
    const double place = Wander::even(m_seed, 3 * slot + 2);
    Stretch stretch;
    stretch.from = slot * m_habit.slot + Timestamp(place * double(m_habit.slot - m_habit.longest));
    stretch.to = stretch.from + m_habit.shortest +
                 Timestamp(length * double(m_habit.longest - m_habit.shortest));
    return stretch;
}

Stretches::Stretch Stretches::near(Timestamp time) const
{
    return ofSlot(time / m_habit.slot);
}

double Stretches::strength(Timestamp time, Timestamp rise, Timestamp fall) const
{
    const std::int64_t slot = time / m_habit.slot;
    for (const Stretch &stretch : {ofSlot(slot), ofSlot(slot - 1)}) {
        const double grown = 1 - std::exp(-double(time - stretch.from) / double(rise));
        if (stretch.contains(time))
            return grown;
        if (stretch.to != 0 && stretch.to <= time)
            return (1 - std::exp(-double(stretch.to - stretch.from) / double(rise))) *
                   std::exp(-double(time - stretch.to) / double(fall));
    }
    return 0;
}

} // namespace Host
