#pragma once

#include "nodes/values/Timestamp.h"

#include <cstdint>

namespace Host {

/// Stretches of time in which something is so that mostly is not: one within each slot of absolute
/// time, where chance has it. Plain value.
class Stretches
{
public:
    struct Stretch
    {
        Nodes::Timestamp from = 0;
        Nodes::Timestamp to = 0; ///< first moment after it

        bool contains(Nodes::Timestamp time) const { return from <= time && time < to; }
    };
    /// How often, in how many of its slots, and how long; microseconds.
    struct Habit
    {
        Nodes::Timestamp slot = 0; ///< longer than `longest`
        double chance = 1;         ///< that a slot has one
        Nodes::Timestamp shortest = 0;
        Nodes::Timestamp longest = 0;
    };

    Stretches(std::uint64_t seed, const Habit &habit) : m_seed(seed), m_habit(habit) {}

    /// Of the slot that holds `time`, an empty one without.
    Stretch near(Nodes::Timestamp time) const;
    bool contains(Nodes::Timestamp time) const { return near(time).contains(time); }
    /// 0 far from any, towards 1 within one: it comes within `rise` and fades within `fall`.
    double strength(Nodes::Timestamp time, Nodes::Timestamp rise, Nodes::Timestamp fall) const;

private:
    Stretch ofSlot(std::int64_t slot) const;

    std::uint64_t m_seed;
    Habit m_habit;
};

} // namespace Host
