#include "nodes/templates/TemplateBinding.h"

#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"

#include <algorithm>

namespace Nodes {

namespace {

/// A parameter of a surrounding template that stands for nothing passes nothing on.
const ConfigNode *targetOf(const NodeLink &link)
{
    const ConfigNode *node = link.GetNode();
    return dynamic_cast<const templateParameter *>(node) ? nullptr : node;
}

const templateArgument *findArgument(const std::vector<ConfigNode *> &arguments,
                                     const std::string &name)
{
    for (const ConfigNode *node : arguments) {
        const auto *argument = dynamic_cast<const templateArgument *>(node);
        if (argument && argument->GetName() == name)
            return argument;
    }
    return nullptr;
}

std::vector<const templateParameter *> parametersOf(const ConfigNode &node)
{
    std::vector<const templateParameter *> parameters;
    for (const auto &child : node.Children()) {
        if (const auto *parameter = dynamic_cast<const templateParameter *>(child.get()))
            parameters.push_back(parameter);
    }
    return parameters;
}

} // namespace

TemplateBinding::TemplateBinding(const ConfigNode &source,
                                 const std::vector<ConfigNode *> &arguments)
{
    for (const templateParameter *parameter : parametersOf(source)) {
        const templateArgument *argument = findArgument(arguments, parameter->GetName());
        bind(*parameter, "", targetOf(argument ? argument->GetLink() : parameter->GetDefault()));
    }
    for (const ConfigNode *argument : arguments) {
        const auto *parameter =
            dynamic_cast<const templateParameter *>(source.GetSubObject(argument->GetName()));
        if (!parameter && dynamic_cast<const templateArgument *>(argument))
            m_unused.push_back(argument->GetName());
    }
}

void TemplateBinding::bind(const templateParameter &parameter, const std::string &prefix,
                           const ConfigNode *actual)
{
    const std::string name = prefix + parameter.GetName();
    m_bound.push_back({parameter.GetId(), name, actual ? actual->GetId() : 0});
    if (!actual)
        m_missing.push_back(name);
    for (const templateParameter *below : parametersOf(parameter)) {
        const ConfigNode *found = actual ? actual->GetSubObject(below->GetName()) : nullptr;
        bind(*below, name + "/", found);
    }
}

IdMap TemplateBinding::GetIds() const
{
    IdMap ids;
    for (const Bound &bound : m_bound) {
        if (bound.actual != 0)
            ids.emplace(bound.parameter, bound.actual);
    }
    return ids;
}

std::string TemplateBinding::Fill(const std::string &text) const
{
    std::string filled = text;
    for (const Bound &bound : m_bound) {
        const std::string mark = "{" + bound.name + "}";
        const std::string name = bound.actual ? NodeLink(bound.actual).GetLinkName() : "?";
        for (std::size_t at = filled.find(mark); at != std::string::npos;
             at = filled.find(mark, at + name.size()))
            filled.replace(at, mark.size(), name);
    }
    return filled;
}

} // namespace Nodes
