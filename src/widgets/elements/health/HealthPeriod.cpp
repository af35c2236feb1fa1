#include "widgets/elements/health/HealthPeriod.h"

#include "nodes/reports/time/ShiftPlan.h"

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

std::vector<Nodes::AlarmShift> HealthPeriod::shiftsOf(const Nodes::ShiftPlan &plan,
                                                      Nodes::Timestamp begin, Nodes::Timestamp end)
{
    std::vector<Nodes::AlarmShift> shifts;
    while (begin < end) {
        const Nodes::ShiftPlan::Shift shift = plan.At(begin);
        if (shift.end <= begin)
            break;
        shifts.push_back({shift.begin, shift.end, shift.name, 0});
        begin = shift.end;
    }
    return shifts;
}

} // namespace Widgets
