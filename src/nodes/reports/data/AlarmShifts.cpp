#include "nodes/reports/data/AlarmShifts.h"

#include "nodes/reports/time/ShiftPlan.h"

namespace Nodes {

std::vector<AlarmShift> AlarmShiftsOf(const ShiftPlan &plan, Timestamp begin, Timestamp end)
{
    std::vector<AlarmShift> shifts;
    while (begin < end) {
        const ShiftPlan::Shift shift = plan.At(begin);
        if (shift.end <= begin)
            break;
        shifts.push_back({shift.begin, shift.end, shift.name, 0});
        begin = shift.end;
    }
    return shifts;
}

} // namespace Nodes
