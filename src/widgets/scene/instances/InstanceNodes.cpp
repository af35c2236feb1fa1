#include "widgets/scene/instances/InstanceNodes.h"

#include "widgets/context/ActionSink.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicWindow.h"

#include <QStringList>

#include <utility>

namespace Widgets {

InstanceNodes::InstanceNodes(Nodes::widgetInstance &element, SceneContextPtr context)
    : m_context(std::move(context)), m_refusal(refusalOf(element))
{
    if (!m_refusal.isEmpty())
        return;
    const Nodes::ConfigNode &source = *element.GetTemplate();
    m_source = source.GetId();
    m_binding.emplace(source, element.GetArguments());
    m_root = Nodes::NodeLink(element.GetNodesCollection()->Instantiate(
        source, element, element.GetName(), m_binding->GetIds()));
    if (!root())
        m_refusal = QStringLiteral("экземпляр не создан");
}

InstanceNodes::~InstanceNodes()
{
    if (root())
        m_context->actions().retire(m_root);
}

QString InstanceNodes::refusalOf(const Nodes::widgetInstance &element)
{
    const QString fault = QString::fromStdString(element.GetFault());
    return !fault.isEmpty() || element.GetNodesCollection() ? fault
                                                            : QStringLiteral("экземпляр не создан");
}

QSize InstanceNodes::size() const
{
    if (const auto *window = dynamic_cast<const Nodes::BasicWindow *>(root()))
        return {window->GetGeometry().width, window->GetGeometry().height};
    const auto *composition = dynamic_cast<const Nodes::BasicComposition *>(root());
    return composition ? QSize(composition->GetSize().width, composition->GetSize().height)
                       : QSize();
}

QString InstanceNodes::missing() const
{
    QStringList names;
    for (const std::string &name : m_binding ? m_binding->GetMissing() : std::vector<std::string>())
        names << QString::fromStdString(name);
    return names.join(QStringLiteral(", "));
}

bool InstanceNodes::isFor(const Nodes::widgetInstance &element) const
{
    const Nodes::ConfigNode *source = element.GetTemplate();
    if (refusalOf(element) != m_refusal || !source)
        return refusalOf(element) == m_refusal;
    return source->GetId() == m_source && m_binding &&
           Nodes::TemplateBinding(*source, element.GetArguments()) == *m_binding;
}

} // namespace Widgets
