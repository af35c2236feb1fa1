#include "widgets/elements/health/HealthPeriod.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr Nodes::Timestamp day = Nodes::Timestamp(86400) * 1000000;

int daysOf(HealthPeriod::Kind kind)
{
    switch (kind) {
    case HealthPeriod::Day:
        return 1;
    case HealthPeriod::Month:
        return 30;
    default:
        return 7;
    }
}

} // namespace

Nodes::Timestamp HealthPeriod::begin(Nodes::Timestamp now) const
{
    const Nodes::Timestamp begin = now - daysOf(kind) * day;
    return kind == Free ? from : begin - begin % Nodes::AlarmFigures::Bin;
}

Nodes::Timestamp HealthPeriod::end(Nodes::Timestamp now) const
{
    return kind == Free ? std::min(to, now) : now;
}

} // namespace Widgets
