#include "nodes/templates/TemplateUse.h"

#include "nodes/model/validation/ValidationResults.h"
#include "nodes/templates/TemplateBinding.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/widgetInstance.h"

#include <algorithm>

namespace Nodes {

namespace {

// In a template an argument may name a parameter of that template: each instance has a copy of the
// user, whose argument leads to what the parameter stands for there.
bool isPassedOn(const ConfigNode &user, const std::string &parameter)
{
    const std::string top = parameter.substr(0, parameter.find('/'));
    const ConfigNode *around = TemplateUse::Around(user);
    for (const ConfigNode *node : TemplateUse::ArgumentsOf(user)) {
        const auto *argument = dynamic_cast<const templateArgument *>(node);
        const ConfigNode *target =
            argument && argument->GetName() == top ? argument->GetLink().GetNode() : nullptr;
        if (dynamic_cast<const templateParameter *>(target))
            return around && TemplateUse::Around(*target) == around;
    }
    return false;
}

void collectShown(const ConfigNode &node, NodeLinks &shown)
{
    const auto *element = dynamic_cast<const widgetInstance *>(&node);
    const NodeLink source(element ? element->GetTemplate() : nullptr);
    if (!source.isEmpty() && std::find(shown.begin(), shown.end(), source) == shown.end()) {
        shown.push_back(source);
        collectShown(*source.GetNode(), shown);
    }
    for (const auto &child : node.Children())
        collectShown(*child, shown);
}

} // namespace

bool TemplateUse::IsTemplate(const ConfigNode &node)
{
    const NodeType::enNodeSubtype kind = node.GetNodeType().GetSubtype();
    return kind == NodeType::SubtypeWindowTemplate || kind == NodeType::SubtypeCompositionTemplate;
}

std::vector<ConfigNode *> TemplateUse::ArgumentsOf(const ConfigNode &user)
{
    return user.GetObjects(NodeType::TypeArgument);
}

const ConfigNode *TemplateUse::Around(const ConfigNode &node)
{
    const ConfigNode *at = &node;
    while (at && !IsTemplate(*at))
        at = at->GetParent();
    return at;
}

NodeLinks TemplateUse::ShownBy(const ConfigNode &node)
{
    NodeLinks shown;
    collectShown(node, shown);
    return shown;
}

bool TemplateUse::Shows(const ConfigNode &source, const ConfigNode &node)
{
    const NodeLinks shown = ShownBy(source);
    return &source == &node ||
           std::find(shown.begin(), shown.end(), NodeLink(&node)) != shown.end();
}

void TemplateUse::Validate(const ConfigNode &user, const ConfigNode &source,
                           ValidationResults &results)
{
    const TemplateBinding binding(source, ArgumentsOf(user));
    const auto add = [&](Result::ResultType type, const std::string &text) {
        results.Add(user.GetNodeLink(), Result(&user, type), user.GetPath() + ": " + text);
    };
    for (const std::string &name : binding.GetMissing()) {
        if (!isPassedOn(user, name))
            add(Result::NotFound, "параметр «" + name + "» шаблона «" + source.GetPath() +
                                      "» ничему не соответствует. Задайте аргумент с этим именем.");
    }
    for (const std::string &name : binding.GetUnused())
        add(Result::InvalidArgument, "у шаблона «" + source.GetPath() + "» нет параметра «" + name +
                                         "». Переименуйте или удалите аргумент.");
}

} // namespace Nodes
