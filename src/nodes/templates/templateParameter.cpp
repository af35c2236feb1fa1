#include "nodes/templates/templateParameter.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

namespace Nodes {

KindInfo templateParameter::Kind()
{
    return KindBuilder::For<templateParameter>("templateParameter", "Template parameter",
                                               "Параметр шаблона")
        .Property<&templateParameter::m_default>(Prop::Default, "Default", "По умолчанию")
        .Hint("any")
        .Children({NodeType(NodeType::SubtypeTemplateParameter)});
}

void templateParameter::Validate(ValidationResults &results) const
{
    BasicSignal::Validate(results);
    const NodeType::enNodeSubtype owner =
        GetParent() ? GetParent()->GetNodeType().GetSubtype() : NodeType::SubtypeNone;
    const bool isPlaced = owner == NodeType::SubtypeWindowTemplate ||
                          owner == NodeType::SubtypeCompositionTemplate ||
                          owner == NodeType::SubtypeTemplateParameter;
    if (!isPlaced)
        results.Add(GetNodeLink(), Result(this, Result::InvalidArgument),
                    "Параметр «" + GetPath() +
                        "» не действует вне шаблона. Перенесите его в шаблон окна или композиции.");
}

Result templateParameter::DoWrite(const SignalValue &)
{
    return Result(this, Result::NotAvailable, GetName() + " stands for no node");
}

} // namespace Nodes
