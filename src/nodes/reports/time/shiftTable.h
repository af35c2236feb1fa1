#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/ReportCodes.h"
#include "nodes/reports/time/ShiftPlan.h"

namespace Nodes {

class NodesCollection;

/// When the shifts of the plant begin, for reports.
class NODES_EXPORT shiftTable : public ConfigNode
{
public:
    static constexpr auto Code = ReportCodes::ShiftTable;
    struct Prop
    {
        static constexpr PropertyId<std::string> Starts{13150, "starts"};
        static constexpr PropertyId<std::string> Names{13151, "names"};
    };

    static KindInfo Kind();

    /// The plan of the first shift table of the project that reads and stands in the local station
    /// or outside of all; without one the default plan. GUI thread.
    static ShiftPlan PlanOf(const NodesCollection *project);

protected:
    void Validate(ValidationResults &results) const override;

private:
    std::string m_starts = "08:00 20:00";
    std::string m_names;
};

} // namespace Nodes
