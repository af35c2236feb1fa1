#include "nodes/actions/BasicTemplateAction.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/templates/TemplateBinding.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"

namespace Nodes {

namespace {

/// The template that the node is part of; null outside of one.
const ConfigNode *templateAround(const ConfigNode &node)
{
    for (const ConfigNode *at = node.GetParent(); at; at = at->GetParent()) {
        const NodeType::enNodeSubtype kind = at->GetNodeType().GetSubtype();
        if (kind == NodeType::SubtypeWindowTemplate || kind == NodeType::SubtypeCompositionTemplate)
            return at;
    }
    return nullptr;
}

// In a template an argument may name a parameter of that template: each instance has a copy of the
// action, whose argument leads to what the parameter stands for there.
bool isPassedOn(const BasicTemplateAction &action, const std::string &parameter)
{
    const std::string top = parameter.substr(0, parameter.find('/'));
    const ConfigNode *around = templateAround(action);
    for (const ConfigNode *node : action.GetArguments()) {
        const auto *argument = dynamic_cast<const templateArgument *>(node);
        const ConfigNode *target =
            argument && argument->GetName() == top ? argument->GetLink().GetNode() : nullptr;
        if (dynamic_cast<const templateParameter *>(target))
            return around && templateAround(*target) == around;
    }
    return false;
}

} // namespace

void BasicTemplateAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicOpeningAction>().Children({NodeType::TypeArgument});
}

void BasicTemplateAction::Validate(ValidationResults &results) const
{
    BasicOpeningAction::Validate(results);
    const ConfigNode *source = GetTemplate();
    if (!source)
        return;
    const TemplateBinding binding(*source, GetArguments());
    const auto add = [&](Result::ResultType type, const std::string &text) {
        results.Add(GetNodeLink(), Result(this, type), GetPath() + ": " + text);
    };
    for (const std::string &name : binding.GetMissing()) {
        if (!isPassedOn(*this, name))
            add(Result::NotFound, "параметр «" + name + "» шаблона «" + source->GetPath() +
                                      "» ничему не соответствует. Задайте аргумент с этим именем.");
    }
    for (const std::string &name : binding.GetUnused())
        add(Result::InvalidArgument, "у шаблона «" + source->GetPath() + "» нет параметра «" +
                                         name + "». Переименуйте или удалите аргумент.");
}

} // namespace Nodes
