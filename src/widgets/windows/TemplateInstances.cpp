#include "widgets/windows/TemplateInstances.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/desktop/Screens.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/templates/windowTemplate.h"
#include "nodes/visual/windows/windowComposed.h"

#include <QWidget>

#include <algorithm>

namespace Widgets {

using Nodes::NodeLink;

namespace {

std::string titleTextOf(const Nodes::ConfigNode &source)
{
    if (const auto *window = dynamic_cast<const Nodes::windowTemplate *>(&source))
        return window->GetTitleText();
    const auto *composition = dynamic_cast<const Nodes::compositionTemplate *>(&source);
    return composition ? composition->GetTitleText() : std::string();
}

void destroy(const NodeLink &node)
{
    if (Nodes::NodesCollection *project = node.GetNodesCollection())
        project->TakeClone(node);
}

} // namespace

TemplateInstances &TemplateInstances::of(ActionDispatcher &actions)
{
    auto *made = actions.findChild<TemplateInstances *>(QString(), Qt::FindDirectChildrenOnly);
    return made ? *made : *new TemplateInstances(actions);
}

TemplateInstances::TemplateInstances(ActionDispatcher &actions)
    : QObject(&actions), m_actions(actions)
{
    connect(&actions, &ActionDispatcher::copiesFreed, this, &TemplateInstances::destroyUnused);
}

// By now every window and every action is deleted.
TemplateInstances::~TemplateInstances()
{
    for (const Instance &instance : m_instances)
        std::for_each(instance.nodes.begin(), instance.nodes.end(), &destroy);
    std::for_each(m_leaving.begin(), m_leaving.end(), &destroy);
}

QWidget *TemplateInstances::find(const Nodes::ConfigNode &source, const Nodes::BasicWindow &window,
                                 const Nodes::TemplateBinding &binding, int screen) const
{
    for (const Instance &instance : m_instances) {
        if (instance.widget && instance.source == source.GetId() &&
            instance.window == window.GetId() && instance.binding == binding &&
            (screen < 0 || ScreenNumber(instance.widget) == screen))
            return instance.widget;
    }
    return nullptr;
}

int TemplateInstances::freeNumber(unsigned long source) const
{
    const auto isTaken = [&](int number) {
        return std::any_of(m_instances.begin(), m_instances.end(), [&](const Instance &instance) {
            return instance.source == source && instance.number == number;
        });
    };
    int number = 1;
    while (isTaken(number))
        ++number;
    return number;
}

Nodes::BasicWindow *TemplateInstances::make(Nodes::ConfigNode &source, Nodes::BasicWindow &window,
                                            const Nodes::TemplateBinding &binding)
{
    Nodes::NodesCollection &project = *source.GetNodesCollection();
    const int number = freeNumber(source.GetId());
    const std::string name = source.GetName() + "_" + std::to_string(number);
    Nodes::ConfigNode *content = project.Instantiate(source, source, name, binding.GetIds());
    Nodes::ConfigNode *frame = content;
    auto *composition = dynamic_cast<Nodes::BasicComposition *>(content);
    if (composition) {
        frame = project.Instantiate(window, window, name, {});
        if (auto *composed = dynamic_cast<Nodes::windowComposed *>(frame))
            composed->SetComposition(composition);
    }
    auto *made = dynamic_cast<Nodes::BasicWindow *>(frame);
    if (!made) {
        destroy(content);
        return nullptr;
    }
    made->SetTitle(binding.Fill(titleTextOf(source)));
    m_instances.push_back(
        {source.GetId(), window.GetId(), number, binding, {NodeLink(frame)}, nullptr});
    if (composition)
        m_instances.back().nodes.emplace_back(composition);
    return made;
}

void TemplateInstances::attach(const Nodes::BasicWindow &instance, QWidget *widget,
                               OpenWindows &windows)
{
    const unsigned long id = instance.GetId();
    if (!widget)
        return release(id);
    for (Instance &known : m_instances) {
        if (known.nodes.front().GetNodeId() != id)
            continue;
        known.widget = widget;
        windows.setOrigin(*widget, known.window);
    }
    connect(widget, &QObject::destroyed, this, [this, id] { release(id); });
}

// The elements are destroyed after their window says so: the nodes go with a later event.
void TemplateInstances::release(unsigned long windowId)
{
    const auto gone = std::find_if(m_instances.begin(), m_instances.end(), [&](const auto &known) {
        return known.nodes.front().GetNodeId() == windowId;
    });
    if (gone == m_instances.end())
        return;
    const std::vector<NodeLink> nodes = gone->nodes;
    m_instances.erase(gone);
    std::for_each(nodes.begin(), nodes.end(), [this](const auto &node) { retire(node); });
}

void TemplateInstances::retire(const NodeLink &instance)
{
    m_leaving.push_back(instance);
    QMetaObject::invokeMethod(this, &TemplateInstances::destroyUnused, Qt::QueuedConnection);
}

void TemplateInstances::destroyUnused()
{
    const auto isUnused = [this](const NodeLink &node) {
        return !node.isValid() || !m_actions.hasActionBelow(*node.GetNode());
    };
    const auto unused = std::stable_partition(
        m_leaving.begin(), m_leaving.end(), [&](const NodeLink &node) { return !isUnused(node); });
    const std::vector<NodeLink> leaving(unused, m_leaving.end());
    m_leaving.erase(unused, m_leaving.end());
    std::for_each(leaving.begin(), leaving.end(), &destroy);
}

} // namespace Widgets
