#include "nodes/templates/widgetInstance.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/templates/TemplateUse.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"

#include <algorithm>

namespace Nodes {

namespace {

/// Whether every parameter below this one finds its node below that node.
bool fits(const ConfigNode &parameter, const ConfigNode &given)
{
    return std::all_of(parameter.Children().begin(), parameter.Children().end(),
                       [&given](const auto &below) {
                           const ConfigNode *found = given.GetSubObject(below->GetName());
                           return found && fits(*below, *found);
                       });
}

} // namespace

KindInfo widgetInstance::Kind()
{
    return KindBuilder::For<widgetInstance>("instance", "Template instance", "Экземпляр шаблона")
        .Inherit<BasicWidget>()
        .Property<&widgetInstance::m_template>(Prop::Template, "Template", "Шаблон")
        .Refers({NodeType::TypeWindow, NodeType::TypeComposition})
        .Property<&widgetInstance::m_isFitted>(Prop::Fit, "Fit into the element",
                                               "Вписать в размер элемента")
        .Children({NodeType::TypeArgument});
}

ConfigNode *widgetInstance::GetTemplate() const
{
    ConfigNode *source = m_template.GetNode();
    return source && TemplateUse::IsTemplate(*source) ? source : nullptr;
}

std::vector<ConfigNode *> widgetInstance::GetArguments() const
{
    return TemplateUse::ArgumentsOf(*this);
}

// An instance hangs below the element that shows it, so that what it was made from is found above.
bool widgetInstance::isEndless() const
{
    const ConfigNode *source = GetTemplate();
    const NodesCollection *project = GetNodesCollection();
    for (const ConfigNode *above = GetParent(); source && project && above;
         above = above->GetParent()) {
        if (above == source || project->GetOriginal(above->GetId()) == source->GetId())
            return true;
    }
    return false;
}

bool widgetInstance::CanShow(const ConfigNode &source) const
{
    const ConfigNode *around = TemplateUse::Around(*this);
    return TemplateUse::IsTemplate(source) && !(around && TemplateUse::Shows(source, *around));
}

std::string widgetInstance::GetFault() const
{
    if (m_template.isEmpty())
        return "шаблон не выбран";
    const ConfigNode *target = m_template.GetNode();
    if (!target)
        return "шаблона № " + std::to_string(m_template.GetNodeId()) + " в проекте нет";
    if (!GetTemplate())
        return "«" + target->GetName() + "» — не шаблон";
    return isEndless() ? "шаблон показывает сам себя" : "";
}

bool widgetInstance::isGiven(const std::string &parameter) const
{
    const auto *there = dynamic_cast<const templateArgument *>(GetSubObject(parameter));
    return there && there->GetLink().GetNode();
}

std::string widgetInstance::parameterFor(const ConfigNode &given) const
{
    const ConfigNode *source = GetTemplate();
    if (!source || TemplateUse::IsTemplate(given))
        return {};
    const bool isSignal = dynamic_cast<const BasicSignal *>(&given) != nullptr;
    std::vector<std::string> fitting;
    for (const auto &child : source->Children()) {
        const bool isGroup = !child->Children().empty();
        if (dynamic_cast<const templateParameter *>(child.get()) && isGroup != isSignal &&
            fits(*child, given))
            fitting.push_back(child->GetName());
    }
    const auto open = std::find_if(fitting.begin(), fitting.end(),
                                   [this](const std::string &name) { return !isGiven(name); });
    if (open != fitting.end())
        return *open;
    return fitting.size() == 1 ? fitting.front() : std::string();
}

Result widgetInstance::CanDropNodes(const NodesArray &nodes, enDropFlags flags) const
{
    if (!(flags & DropLink))
        return BasicWidget::CanDropNodes(nodes, flags);
    for (const NodeLink &link : nodes) {
        const ConfigNode *node = link.GetNode();
        const bool isTemplate = node && TemplateUse::IsTemplate(*node);
        if (isTemplate && !CanShow(*node))
            return Result(this, Result::InvalidArgument, "it would show itself");
        if (!node || (!isTemplate && parameterFor(*node).empty()))
            return Result(this, Result::InvalidArgument, "no parameter for it");
    }
    return nodes.empty() ? Result(this, Result::InvalidArgument, "nothing to drop") : Result();
}

int widgetInstance::DropNodes(const NodesArray &nodes, enDropFlags flags)
{
    if (!(flags & DropLink))
        return BasicWidget::DropNodes(nodes, flags);
    int count = 0;
    for (const NodeLink &link : nodes) {
        const ConfigNode *node = link.GetNode();
        if (node && TemplateUse::IsTemplate(*node)) {
            count += SetProperty(Prop::Template, link).IsSuccess() ? 1 : 0;
            continue;
        }
        const std::string parameter = node ? parameterFor(*node) : std::string();
        count += !parameter.empty() && give(parameter, link) ? 1 : 0;
    }
    return count;
}

bool widgetInstance::give(const std::string &parameter, const NodeLink &node)
{
    if (auto *there = dynamic_cast<templateArgument *>(GetSubObject(parameter)))
        return there->SetProperty(templateArgument::Prop::Node, node).IsSuccess();
    const KindInfo *kind = KindTable::Instance().Find(NodeType(templateArgument::Code));
    std::unique_ptr<ConfigNode> argument = GetNodesCollection()->CreateDetached(*kind);
    argument->SetName(parameter);
    return argument->SetProperty(templateArgument::Prop::Node, node) && AddNode(argument);
}

void widgetInstance::Validate(ValidationResults &results) const
{
    BasicWidget::Validate(results);
    const std::string fault = GetFault();
    if (fault.empty())
        return TemplateUse::Validate(*this, *GetTemplate(), results);
    if (!m_template.isEmpty() && !m_template.GetNode())
        return; // told like every link that leads nowhere
    results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "template"),
                "Экземпляр «" + GetPath() + "»: " + fault +
                    ". Выберите другой в свойстве «Шаблон».");
}

} // namespace Nodes
