#include "editor/problems/ProblemMend.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/validation/FindingCode.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/RemoveAttributesCommand.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>
#include <set>
#include <tuple>
#include <unordered_set>

namespace Editor {

using Nodes::ConfigNode;
using Nodes::NodeLink;
using Nodes::NodeLinks;
using Widgets::Problem;

namespace {

namespace Code = Nodes::FindingCode;

struct Mend
{
    const char *code;
    const char *text; // Russian
    void (*add)(const ConfigNode &node, const Problem &problem, QUndoCommand &step);
};

bool fits(const Nodes::PropertyDescriptor &d, const NodeLink &link)
{
    const auto &families = d.linkFamilies;
    return link.isValid() &&
           (families.empty() || std::find(families.begin(), families.end(),
                                          link.GetNodeType().GetFamily()) != families.end());
}

void clearLinks(const ConfigNode &node, const Problem &problem, QUndoCommand &step)
{
    const std::string key = problem.property.toStdString();
    const Nodes::PropertyDescriptor *d = node.GetKind()->FindProperty(std::string_view(key));
    if (!d || !Nodes::IsLinkProperty(*d))
        return;
    if (d->binding.type == Nodes::PropertyType::Link) {
        const auto &link = *static_cast<const NodeLink *>(d->binding.data(node));
        if (!link.isEmpty() && !fits(*d, link))
            new Utils::ChangePropertyCommand(NodeLink(&node), d->valueId, NodeLink(), &step);
        return;
    }
    const auto &links = *static_cast<const NodeLinks *>(d->binding.data(node));
    NodeLinks kept;
    std::copy_if(links.begin(), links.end(), std::back_inserter(kept),
                 [d](const NodeLink &link) { return fits(*d, link); });
    if (kept.size() != links.size())
        new Utils::ChangePropertyCommand(NodeLink(&node), d->valueId, kept, &step);
}

// The first of a name keeps it.
void renameChildren(const ConfigNode &node, const Problem &, QUndoCommand &step)
{
    std::unordered_set<std::string> seen;
    std::unordered_set<std::string> taken;
    for (const auto &child : node.Children())
        taken.insert(child->GetName());
    for (const auto &child : node.Children()) {
        const std::string &name = child->GetName();
        if (name.empty() || seen.insert(name).second)
            continue;
        int number = 2;
        while (!taken.insert(name + ' ' + std::to_string(number)).second)
            ++number;
        new Utils::ChangeTextCommand(NodeLink(child.get()), Utils::ChangeTextCommand::Name,
                                     name + ' ' + std::to_string(number), &step);
    }
}

void removeAttributes(const ConfigNode &node, const Problem &problem, QUndoCommand &step)
{
    const std::string property = problem.property.toStdString();
    std::vector<std::string> keys;
    for (const auto &attribute : node.GetForeignAttributes()) {
        const std::string &key = attribute.first;
        const bool isKnown = node.GetKind()->FindProperty(std::string_view(key)) != nullptr;
        if (property.empty() ? !isKnown && key.front() != '#' : key == property)
            keys.push_back(key);
    }
    if (!keys.empty())
        new Utils::RemoveAttributesCommand(NodeLink(&node), keys, &step);
}

constexpr Mend mends[] = {
    {Code::NoTarget, "Убрать ссылку, которая никуда не ведёт", &clearLinks},
    {Code::WrongTarget, "Убрать ссылку, которая сюда не подходит", &clearLinks},
    {Code::RepeatedName, "Дать повторам свободные имена", &renameChildren},
    {Code::UnknownAttribute, "Удалить недействующие атрибуты узла", &removeAttributes},
    {Code::BadValue, "Удалить негодное значение, останется значение по умолчанию",
     &removeAttributes},
};

const Mend *find(const Problem &problem)
{
    const auto *found = std::find_if(std::begin(mends), std::end(mends), [&](const Mend &mend) {
        return problem.code == QLatin1String(mend.code);
    });
    return found == std::end(mends) || !problem.node.isValid() ? nullptr : found;
}

} // namespace

QString ProblemMend::describe(const Problem &problem)
{
    const Mend *mend = find(problem);
    return mend ? QCoreApplication::translate("Editor::ProblemMend", mend->text) : QString();
}

QUndoCommand *ProblemMend::make(const std::vector<Problem> &problems)
{
    auto step = std::make_unique<Utils::CommandGroup>(
        QCoreApplication::translate("Editor::ProblemMend", "Исправление проблем проекта"));
    std::set<std::tuple<unsigned long, QString, const Mend *>> done; // several tell of the same
    for (const Problem &problem : problems) {
        const Mend *mend = find(problem);
        if (!mend || !done.emplace(problem.node.GetNodeId(), problem.property, mend).second)
            continue;
        mend->add(*problem.node.GetNode(), problem, *step);
    }
    return step->childCount() > 0 ? step.release() : nullptr;
}

} // namespace Editor
