#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"

#include <utility>

namespace Nodes {

class ReportSignalInfo;

/// A printable report: a template file, the variables it is filled with and the signals whose
/// archive it shows. Variables and signals are its children.
class NODES_EXPORT BasicReport : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeReport;
    struct Prop
    {
        static constexpr PropertyId<ResourceLink> Template{22001, "template"};
    };

    static KindInfo Kind();

    /// Template as configured: relative to the project's directory, "" when none is set.
    const std::string &GetFilePath() const { return m_template.GetFilePath(); }
    /// Names and values, in order.
    std::vector<std::pair<std::string, std::string>> GetVariables() const;
    /// Owned by the report; they may refer to signals that are gone.
    std::vector<ReportSignalInfo *> GetSignals() const;

protected:
    /// Also reports a missing template.
    void Validate(ValidationResults &results) const override;

private:
    ResourceLink m_template;
};

} // namespace Nodes
