#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/reports/time/ReportPeriod.h"

#include <utility>

namespace Nodes {

class BasicReportSource;
class ReportSignalInfo;

/// A printable report: a template file, the variables it is filled with and its data sources.
/// Variables and sources are its children.
class NODES_EXPORT BasicReport : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeReport;
    struct Prop
    {
        static constexpr PropertyId<ResourceLink> Template{22001, "template"};
        static constexpr PropertyId<int> Period{22002, "period"};
    };

    static KindInfo Kind();

    /// Template as configured: relative to the project's directory, "" when none is set.
    const std::string &GetFilePath() const { return m_template.GetFilePath(); }
    /// What it is about until the operator chooses.
    enReportPeriod GetPeriod() const { return enReportPeriod(m_period); }
    /// Names and values, in order.
    using Variables = std::vector<std::pair<std::string, std::string>>;
    Variables GetVariables() const { return VariablesBelow(*this); }
    /// Those that are children of a node.
    static Variables VariablesBelow(const ConfigNode &node);
    /// Owned by the report; they may refer to signals that are gone.
    std::vector<ReportSignalInfo *> GetSignals() const;
    /// All of its data sources in order, signals among them.
    std::vector<BasicReportSource *> GetSources() const;

protected:
    /// Also reports a missing template.
    void Validate(ValidationResults &results) const override;

private:
    ResourceLink m_template;
    int m_period = PeriodShift;
};

} // namespace Nodes
