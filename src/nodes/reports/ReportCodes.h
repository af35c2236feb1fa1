#pragma once

#include "nodes/model/NodeType.h"

namespace Nodes::ReportCodes {

// Of kinds that code which knows nothing else of reports takes as children.
constexpr auto Schedule = NodeType::SubtypeReportSchedule;
constexpr auto ShiftTable = NodeType::enNodeSubtype(0xD008);

} // namespace Nodes::ReportCodes
