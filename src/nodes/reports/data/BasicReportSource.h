#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/reports/data/ReportQuestion.h"

#include <memory>

namespace Nodes {

/// A data source of a report: a child of it, by whose name the template knows it.
class NODES_EXPORT BasicReportSource : public ConfigNode
{
public:
    /// Looks up what is to be read. Never null: what is missing or forbidden is told by the answer.
    /// GUI thread.
    virtual std::unique_ptr<ReportQuestion> Ask(const ReportOrder &order) const = 0;
};

} // namespace Nodes
