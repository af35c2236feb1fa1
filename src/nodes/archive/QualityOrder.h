#pragma once

#include "nodes/values/Quality.h"

namespace Nodes {

/// What the samples of an interval are worth together: Good before Uncertain, Stale and Bad.
constexpr int BadnessOf(Quality quality)
{
    switch (quality) {
    case Quality::Good:
        return 0;
    case Quality::Uncertain:
        return 1;
    case Quality::Stale:
        return 2;
    case Quality::Bad:
        break;
    }
    return 3;
}

constexpr Quality WorseOf(Quality a, Quality b)
{
    return BadnessOf(b) > BadnessOf(a) ? b : a;
}

/// Whether a sample of that quality tells a value: one that is bad or stale is a gap.
constexpr bool IsKnown(Quality quality)
{
    return quality == Quality::Good || quality == Quality::Uncertain;
}

} // namespace Nodes
