#pragma once

#include "nodes/model/links/LinkWalk.h"
#include "nodes/model/links/NodeLink.h"

#include <QRect>
#include <QString>

#include <memory>
#include <string>
#include <vector>

class QUndoCommand;

namespace Nodes {
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Editor {

class NodeRecipe;

/// Makes one window that serves many of a kind out of elements drawn for one of them: copies of the
/// elements, with a parameter in place of each signal they use. An instance may take the place of
/// the elements on their screen. Signals that stand below one node
/// become parameters below a parameter for that node where another node has children of these names
/// too: an instance then names the node alone. GUI thread.
class TemplateMaker
{
public:
    /// The elements have to stand in that project.
    TemplateMaker(Nodes::NodesCollection &project, const Nodes::NodeLinks &elements);

    /// What becomes of the elements.
    enum class Originals {
        Stay,   ///< an action beside the template opens an instance for their signals
        Replace ///< an instance for their signals stands where they stood
    };
    /// The template, and what makes an instance of it.
    struct Made
    {
        Nodes::NodeLink window;
        Nodes::NodeLink action;   ///< empty when they were replaced
        Nodes::NodeLink instance; ///< empty when they stay
    };
    /// One step that adds the template below `parent`; null, with a Russian reason, when it cannot
    /// be. The caller owns it; the nodes are the project's until it is executed.
    QUndoCommand *make(const std::string &name, Nodes::ConfigNode &parent, Originals originals,
                       Made &made, QString &whyNot);

private:
    struct Parameter
    {
        const Nodes::ConfigNode *actual; ///< a signal, or the node that its signals stand below
        std::vector<const Nodes::ConfigNode *> below;
        std::string name;
    };

    void findSignals();
    void collectSignals(const Nodes::ConfigNode &node);
    void findActions();
    std::vector<Parameter> parameters() const;
    std::unique_ptr<Nodes::ConfigNode> makeParameter(const Nodes::ConfigNode &actual,
                                                     const std::string &name);
    std::unique_ptr<Nodes::ConfigNode> makeWindow(const std::string &name,
                                                  const std::vector<Parameter> &parameters);
    bool addCopies(Nodes::ConfigNode &window);
    QRect box() const;
    Nodes::NodeLink makeAction(const Nodes::NodeLink &window,
                               const std::vector<Parameter> &parameters) const;
    Nodes::NodeLink makeInstance(const Nodes::NodeLink &window,
                                 const std::vector<Parameter> &parameters) const;
    static void addArguments(NodeRecipe &user, const std::vector<Parameter> &parameters);
    void replaceElements(const Nodes::NodeLink &instance, QUndoCommand *step) const;
    Nodes::NodeLink hold(std::unique_ptr<Nodes::ConfigNode> node);

    Nodes::NodesCollection &m_project;
    std::vector<Nodes::ConfigNode *> m_elements;
    std::vector<Nodes::ConfigNode *> m_actions; ///< that refer to the signals
    std::vector<const Nodes::ConfigNode *> m_signals;
    int m_margin = 16;  ///< pixels around the elements
    Nodes::IdMap m_ids; ///< what parameters stand for to the parameters
};

} // namespace Editor
