#pragma once

#include "nodes/model/links/NodeLink.h"
#include "nodes/templates/TemplateBinding.h"

#include <QObject>

#include <memory>
#include <vector>

namespace Nodes {
class BasicTemplateAction;
class BasicWindow;
class NodesCollection;
} // namespace Nodes

class QWidget;

namespace Widgets {

class ActionDispatcher;
class OpenWindows;

/// The instances of template windows and compositions that are open: makes and names their nodes,
/// and destroys them when their window is gone and no action works on them any more. GUI thread.
class TemplateInstances : public QObject
{
    Q_OBJECT

public:
    /// The one that lives as long as that dispatcher, made on first use.
    static TemplateInstances &of(ActionDispatcher &actions);
    explicit TemplateInstances(ActionDispatcher &actions);
    ~TemplateInstances() override;

    /// Open window of an instance of that template that shows the same nodes, made from the same
    /// window node; on a 0-based screen, or on any when that is negative. Null when there is none.
    QWidget *find(const Nodes::ConfigNode &source, const Nodes::BasicWindow &window,
                  const Nodes::TemplateBinding &binding, int screen) const;

    /// Node of a new instance, called "<template>_<lowest free number from 1>". `source` is the
    /// template: `window` itself, or a composition that a copy of `window` is to show. Null when
    /// ids run into each other.
    Nodes::BasicWindow *make(Nodes::ConfigNode &source, Nodes::BasicWindow &window,
                             const Nodes::TemplateBinding &binding);
    /// Ties the instance to its window, one of `windows`: it ends when that is destroyed. Null ends
    /// it at once.
    void attach(const Nodes::BasicWindow &instance, QWidget *widget, OpenWindows &windows);
    /// Takes over nodes of an instance that no window or element shows any more.
    void retire(const Nodes::NodeLink &instance);

private:
    struct Instance
    {
        unsigned long source;
        unsigned long window; ///< node it was made from
        int number;
        Nodes::TemplateBinding binding;
        std::vector<Nodes::NodeLink> nodes; ///< the window's first
        QWidget *widget = nullptr;
    };

    int freeNumber(unsigned long source) const;
    void release(unsigned long windowId);
    void destroyUnused();

    ActionDispatcher &m_actions;
    std::vector<Instance> m_instances;
    std::vector<Nodes::NodeLink> m_leaving; ///< nodes of windows that are gone
};

} // namespace Widgets
