#include "editor/templates/TemplateMaker.h"

#include "editor/wizard/NodeRecipe.h"

#include "nodes/model/FreeName.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/windowTemplate.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/CommandGroup.h"
#include "utils/undo/RemoveNodeLinkGroup.h"

#include <algorithm>

namespace Editor {

using Nodes::ConfigNode;
using Nodes::NodeLink;

namespace {

template <class Node> const Nodes::KindInfo &kindOf()
{
    return *Nodes::KindTable::Instance().Find(
        Nodes::NodeType(Nodes::NodeType::enNodeSubtype(Node::Code)));
}

template <class Item> bool has(const std::vector<Item> &items, const Item &item)
{
    return std::find(items.begin(), items.end(), item) != items.end();
}

std::string freeName(const ConfigNode &parent, const std::string &wanted)
{
    std::vector<std::string_view> taken;
    for (const auto &child : parent.Children())
        taken.emplace_back(child->GetName());
    return Nodes::FreeName(taken, wanted, 1);
}

bool refersTo(const ConfigNode &node, const std::vector<const ConfigNode *> &targets)
{
    bool refers = false;
    Nodes::VisitLinks(node, *node.GetKind(),
                      [&](const Nodes::PropertyDescriptor &, const NodeLink &link) {
                          refers |= has<const ConfigNode *>(targets, link.GetNode());
                      });
    return refers || std::any_of(node.Children().begin(), node.Children().end(),
                                 [&](const auto &child) { return refersTo(*child, targets); });
}

/// Whether another node than `one` has children of the same names: one that can stand in its place.
bool hasTwin(const ConfigNode &node, const ConfigNode &one,
             const std::vector<const ConfigNode *> &children)
{
    const auto hasLike = [&node](const ConfigNode *child) {
        const ConfigNode *found = node.GetSubObject(child->GetName());
        return found && found->GetNodeType() == child->GetNodeType(); // no template's parameter
    };
    const bool isTwin = &node != &one && std::all_of(children.begin(), children.end(), hasLike);
    return isTwin || std::any_of(node.Children().begin(), node.Children().end(),
                                 [&](const auto &child) { return hasTwin(*child, one, children); });
}

void set(ConfigNode &node, const char *key, const std::string &text)
{
    (void)node.SetPropertyText(key, text);
}

} // namespace

TemplateMaker::TemplateMaker(Nodes::NodesCollection &project, const Nodes::NodeLinks &elements)
    : m_project(project)
{
    for (const NodeLink &link : elements) {
        if (auto *element = dynamic_cast<Nodes::BasicWidget *>(link.GetNode()))
            m_elements.push_back(element);
    }
    findSignals();
    findActions();
}

void TemplateMaker::findSignals()
{
    for (const ConfigNode *element : m_elements)
        collectSignals(*element);
}

void TemplateMaker::collectSignals(const ConfigNode &node)
{
    Nodes::VisitLinks(
        node, *node.GetKind(), [this](const Nodes::PropertyDescriptor &, const NodeLink &link) {
            const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(link.GetNode());
            if (signal && !has<const ConfigNode *>(m_signals, signal))
                m_signals.push_back(signal);
        });
    for (const auto &child : node.Children())
        collectSignals(*child);
}

// Actions follow an instance only when they stand below its template.
void TemplateMaker::findActions()
{
    const auto take = [this](const Nodes::PropertyDescriptor &, const NodeLink &link) {
        ConfigNode *action = link.GetNode();
        if (action && action->GetNodeType().GetFamily() == Nodes::NodeType::TypeAction &&
            !has(m_actions, action))
            m_actions.push_back(action);
    };
    for (const ConfigNode *element : m_elements)
        Nodes::VisitLinks(*element, *element->GetKind(), take);
    for (const ConfigNode *action : m_actions)
        collectSignals(*action);
    m_actions.erase(
        std::remove_if(m_actions.begin(), m_actions.end(),
                       [this](const ConfigNode *action) { return !refersTo(*action, m_signals); }),
        m_actions.end());
}

std::vector<TemplateMaker::Parameter> TemplateMaker::parameters() const
{
    std::vector<Parameter> found;
    std::vector<std::string> names;
    const auto add = [&](const ConfigNode *actual) -> Parameter & {
        const std::vector<std::string_view> taken(names.begin(), names.end());
        names.push_back(Nodes::FreeName(taken, actual->GetName(), 1));
        found.push_back({actual, {}, names.back()});
        return found.back();
    };
    std::vector<const ConfigNode *> done;
    for (const ConfigNode *signal : m_signals) {
        if (has(done, signal))
            continue;
        std::vector<const ConfigNode *> siblings;
        std::copy_if(m_signals.begin(), m_signals.end(), std::back_inserter(siblings),
                     [signal](const ConfigNode *other) {
                         return other->GetParent() == signal->GetParent();
                     });
        const bool isGroup =
            siblings.size() > 1 && hasTwin(*m_project.GetRoot(), *signal->GetParent(), siblings);
        if (!isGroup)
            siblings = {signal};
        Parameter &parameter = add(isGroup ? signal->GetParent() : signal);
        if (isGroup)
            parameter.below = siblings;
        done.insert(done.end(), siblings.begin(), siblings.end());
    }
    return found;
}

std::unique_ptr<ConfigNode> TemplateMaker::makeParameter(const ConfigNode &actual,
                                                         const std::string &name)
{
    auto node = m_project.CreateDetached(kindOf<Nodes::templateParameter>());
    node->SetName(name);
    m_ids[actual.GetId()] = node->GetId();
    return node;
}

QRect TemplateMaker::box() const
{
    QRect all;
    for (const ConfigNode *node : m_elements) {
        const Nodes::NRect box = dynamic_cast<const Nodes::BasicWidget &>(*node).GetGeometry();
        all |= QRect(box.x, box.y, box.width, box.height);
    }
    return all;
}

bool TemplateMaker::addCopies(ConfigNode &window)
{
    const QRect all = box();
    set(window, "width", std::to_string(all.width() + 2 * m_margin));
    set(window, "height", std::to_string(all.height() + 2 * m_margin));
    Nodes::NodesArray originals;
    for (ConfigNode *node : m_elements)
        originals.push_back(NodeLink(node));
    for (ConfigNode *node : m_actions)
        originals.push_back(NodeLink(node));
    Nodes::NodesArray copies;
    if (!m_project.CloneNodes(originals, copies, false))
        return false;
    bool isWhole = true;
    for (const NodeLink &copy : copies) {
        std::unique_ptr<ConfigNode> node = m_project.TakeClone(copy);
        node->SetName(freeName(window, node->GetName()));
        if (auto *element = dynamic_cast<Nodes::BasicWidget *>(node.get()))
            element->SetPosition(element->GetPosition().x - all.x() + m_margin,
                                 element->GetPosition().y - all.y() + m_margin);
        isWhole &= bool(window.AddNode(node));
    }
    return isWhole;
}

std::unique_ptr<ConfigNode> TemplateMaker::makeWindow(const std::string &name,
                                                      const std::vector<Parameter> &parameters)
{
    auto window = m_project.CreateDetached(kindOf<Nodes::windowTemplate>());
    window->SetName(name);
    for (const Parameter &parameter : parameters) {
        auto upper = makeParameter(*parameter.actual, parameter.name);
        for (const ConfigNode *signal : parameter.below) {
            auto lower = makeParameter(*signal, signal->GetName());
            if (!upper->AddNode(lower))
                return nullptr;
        }
        if (!window->AddNode(upper))
            return nullptr;
    }
    if (!parameters.empty())
        set(*window, "title", "{" + parameters.front().name + "}");
    if (!addCopies(*window))
        return nullptr;
    Nodes::RemapLinks(*window, m_ids);
    return window;
}

NodeLink TemplateMaker::makeAction(const NodeLink &window,
                                   const std::vector<Parameter> &parameters) const
{
    QString name = QString::fromStdString(window.GetLinkName());
    if (!parameters.empty())
        name += ' ' + QString::fromStdString(parameters.front().actual->GetName());
    NodeRecipe recipe(QStringLiteral("actionShowWindowTemplate"), name);
    recipe.set(QStringLiteral("window"), window);
    addArguments(recipe, parameters);
    return recipe.make(m_project);
}

void TemplateMaker::addArguments(NodeRecipe &user, const std::vector<Parameter> &parameters)
{
    for (const Parameter &parameter : parameters)
        user.add(
            NodeRecipe(QStringLiteral("templateArgument"), QString::fromStdString(parameter.name))
                .set(QStringLiteral("node"), NodeLink(parameter.actual)));
}

NodeLink TemplateMaker::makeInstance(const NodeLink &window,
                                     const std::vector<Parameter> &parameters) const
{
    const QRect all = box();
    const std::string name =
        parameters.empty() ? window.GetLinkName() : parameters.front().actual->GetName();
    NodeRecipe recipe(QStringLiteral("instance"),
                      QString::fromStdString(freeName(*m_elements.front()->GetParent(), name)));
    recipe.set(QStringLiteral("template"), window)
        .set(QStringLiteral("x"), all.x())
        .set(QStringLiteral("y"), all.y())
        .set(QStringLiteral("width"), all.width())
        .set(QStringLiteral("height"), all.height());
    addArguments(recipe, parameters);
    return recipe.make(m_project);
}

// It takes the place of the topmost one among the elements that stay.
void TemplateMaker::replaceElements(const NodeLink &instance, QUndoCommand *step) const
{
    int zOrder = 0;
    Nodes::NodeLinks elements;
    for (const ConfigNode *node : m_elements) {
        zOrder = std::max(zOrder, dynamic_cast<const Nodes::BasicWidget &>(*node).GetZOrder());
        elements.push_back(NodeLink(node));
    }
    set(*instance.GetNode(), "zOrder", std::to_string(zOrder));
    const NodeLink parent(m_elements.front()->GetParent());
    new Utils::RemoveNodeLinkGroup(parent, elements, step);
    new Utils::AddNodeLinkCommand(instance, parent, step);
}

NodeLink TemplateMaker::hold(std::unique_ptr<ConfigNode> node)
{
    const NodeLink link(node.get());
    return node && m_project.HoldClone(node, true) ? link : NodeLink();
}

QUndoCommand *TemplateMaker::make(const std::string &name, ConfigNode &parent, Originals originals,
                                  Made &made, QString &whyNot)
{
    if (m_elements.empty()) {
        whyNot = QStringLiteral("Выделите элементы окна, из которых сделать шаблон.");
        return nullptr;
    }
    const bool isReplacing = originals == Originals::Replace;
    m_margin = isReplacing ? 0 : m_margin;
    const std::vector<Parameter> all = parameters();
    made.window = hold(makeWindow(freeName(parent, name), all));
    NodeLink &user = isReplacing ? made.instance : made.action;
    if (made.window.GetNode())
        user = isReplacing ? makeInstance(made.window, all) : makeAction(made.window, all);
    if (!made.window.GetNode() || !user.GetNode()) {
        (void)m_project.TakeClone(made.window);
        whyNot = QStringLiteral("Эти элементы не могут стоять в шаблоне окна. Выделите другие.");
        return nullptr;
    }
    auto *group = new Utils::CommandGroup(QStringLiteral("Шаблон из выделения"));
    new Utils::AddNodeLinkCommand(made.window, NodeLink(&parent), group);
    if (isReplacing)
        replaceElements(user, group);
    else
        new Utils::AddNodeLinkCommand(user, NodeLink(&parent), group);
    return group;
}

} // namespace Editor
