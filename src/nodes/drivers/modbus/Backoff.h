#pragma once

#include "nodes/NodesExport.h"

#include <random>

namespace Nodes {

/// Waiting times between attempts to reach a device: doubling from the minimum to the maximum, each
/// shortened at random by up to a quarter, so that many stations do not knock at the same moment.
class NODES_EXPORT Backoff
{
public:
    /// Milliseconds; a maximum below the minimum counts as the minimum.
    Backoff(int minimum, int maximum, unsigned seed);

    /// The next wait, ms: never above the maximum, never below three quarters of the minimum.
    int Next();
    /// The device answered: start from the minimum again.
    void Reset() { m_current = m_minimum; }

private:
    int m_minimum;
    int m_maximum;
    int m_current;
    std::minstd_rand m_random;
};

} // namespace Nodes
