#include "editor/properties/values/ProjectTexts.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"

#include <set>

namespace Editor {

namespace {

void collect(const Nodes::ConfigNode &node, const Nodes::PropertyDescriptor &descriptor,
             std::set<std::string> &texts)
{
    const Nodes::KindInfo *kind = node.GetKind();
    const Nodes::PropertyDescriptor *own = kind ? kind->FindProperty(descriptor.valueId) : nullptr;
    if (own && own->IsSameAs(descriptor))
        texts.insert(own->binding.format(*own, node));
    for (const auto &child : node.Children())
        collect(*child, descriptor, texts);
}

} // namespace

QStringList projectTexts(const Nodes::NodesCollection *project,
                         const Nodes::PropertyDescriptor &descriptor)
{
    std::set<std::string> texts;
    if (project && project->GetRoot())
        collect(*project->GetRoot(), descriptor, texts);
    texts.erase(std::string());
    QStringList sorted;
    for (const std::string &text : texts)
        sorted << QString::fromStdString(text);
    sorted.sort(Qt::CaseInsensitive);
    return sorted;
}

} // namespace Editor
