#pragma once

#include <QList>

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

class ProxyLayer;

/// The layers of one scene in the order they came, not owned. They stand over each other by their
/// z-values. GUI thread.
class LayerStack
{
public:
    const QList<ProxyLayer *> &all() const { return m_layers; }
    void append(const QList<ProxyLayer *> &layers) { m_layers += layers; }
    bool has(const Nodes::ConfigNode *node) const;

    /// Those that are visible and have a node, lowest first.
    QList<ProxyLayer *> sorted() const;
    /// Node of the topmost of these; null without one.
    Nodes::ConfigNode *topmostNode() const;
    /// Where what is pasted goes: the first of those with the greatest z-value.
    QList<ProxyLayer *> highest() const;

private:
    QList<ProxyLayer *> m_layers;
};

} // namespace Widgets
