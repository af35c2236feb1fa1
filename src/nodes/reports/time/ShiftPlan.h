#pragma once

#include "nodes/NodesExport.h"
#include "nodes/values/Result.h"
#include "nodes/values/Timestamp.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nodes {

/// When the shifts of a plant begin, the same every day: local times of day; a shift lasts until
/// the next one begins. Plain value, any thread.
class NODES_EXPORT ShiftPlan
{
public:
    struct Shift
    {
        Timestamp begin;
        Timestamp end;
        std::string name; ///< "" where it has none
    };

    /// Two shifts of twelve hours, from 08:00 and 20:00.
    ShiftPlan();

    /// "08:00 16:00 00:00" and "дневная; вечерняя; ночная": names in the order of the times, fewer
    /// of them if some have none. ParseError for what is no time of day, for none at all and for
    /// more names than times; Duplicate for a time that stands there twice. `plan` then stays.
    [[nodiscard]] static Result Parse(std::string_view starts, std::string_view names,
                                      ShiftPlan &plan);

    /// The shift under way at that moment.
    Shift At(Timestamp moment) const;

private:
    struct Start
    {
        int second; // of the day
        std::string name;
    };

    std::vector<Start> m_starts; // ascending, at least one
};

} // namespace Nodes
