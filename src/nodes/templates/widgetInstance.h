#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/BasicWidget.h"

namespace Nodes {

/// A template drawn on a screen: the elements of the template, each parameter standing for what
/// the argument of its name gives. All instances follow the template. A signal of its own only
/// carries the sign of alarms.
class NODES_EXPORT widgetInstance : public BasicWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15015);
    struct Prop : BasicWidget::Prop
    {
        static constexpr PropertyId<NodeLink> Template{27011, "template"};
        static constexpr PropertyId<bool> Fit{27012, "fit"};
    };

    static KindInfo Kind();

    /// Null without one, and for a node that is no template.
    ConfigNode *GetTemplate() const;
    std::vector<ConfigNode *> GetArguments() const;
    /// Drawn as large as the element has room for, in the template's proportions; else as drawn.
    bool isFitted() const { return m_isFitted; }
    /// The template would have to show itself inside of itself.
    bool isEndless() const;
    /// Whether it could show that template: not the one it stands in, nor one that shows that.
    bool CanShow(const ConfigNode &source) const;
    /// In Russian, why there is nothing to show; "" when there is.
    std::string GetFault() const;

    /// A drop gives the nodes for parameters: a node with children of the names below a parameter
    /// for that one, a signal for the first that has nothing yet, or for the only one.
    Result CanDropNodes(const NodesArray &nodes, enDropFlags flags) const override;
    int DropNodes(const NodesArray &nodes, enDropFlags flags) override;

    void Validate(ValidationResults &results) const override;

private:
    std::string parameterFor(const ConfigNode &given) const;
    bool isGiven(const std::string &parameter) const;
    bool give(const std::string &parameter, const NodeLink &node);

    NodeLink m_template;
    bool m_isFitted = true;
};

} // namespace Nodes
