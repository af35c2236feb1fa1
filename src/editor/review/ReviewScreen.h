#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/BasicWidget.h"

#include <QColor>
#include <QRect>
#include <QSize>
#include <QVector>

#include <optional>

namespace Editor {

/// Value of that property; nothing where the node's kind has none.
template <class T>
std::optional<T> valueOf(const Nodes::ConfigNode &node, const Nodes::PropertyId<T> &id)
{
    const Nodes::PropertyDescriptor *found = node.GetKind()->FindProperty(unsigned(id));
    if (!found)
        return std::nullopt;
    return *static_cast<const T *>(found->binding.data(node));
}

/// One element of a screen under review.
struct ReviewElement
{
    const Nodes::BasicWidget *node;
    QRect rect; ///< scene pixels
};

/// A window or composition as a review sees it: its elements that are shown at first, lowest first.
/// Refers to the nodes, which have to stay while it is used. GUI thread.
class ReviewScreen
{
public:
    explicit ReviewScreen(const Nodes::ConfigNode &screen);

    /// Whether that node is drawn by itself: a window but for composed ones, a composition.
    static bool isScreen(const Nodes::ConfigNode &node);
    /// All of a project, in the order of its tree.
    static Nodes::NodeLinks screensBelow(const Nodes::ConfigNode &root);

    const Nodes::ConfigNode &node() const { return m_node; }
    QSize size() const { return m_size; }
    const QVector<ReviewElement> &elements() const { return m_elements; }
    /// What the element at that place stands on: its own surface, else that of the topmost element
    /// below its middle, else the screen's. Pictures count as see-through.
    QColor surfaceOf(int element) const;

private:
    void addElements(const Nodes::ConfigNode &owner);

    const Nodes::ConfigNode &m_node;
    QSize m_size;
    QColor m_background;
    QVector<ReviewElement> m_elements;
};

} // namespace Editor
