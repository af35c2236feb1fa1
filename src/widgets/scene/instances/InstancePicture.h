#pragma once

#include "widgets/context/SceneContext.h"

#include "nodes/model/links/NodeLink.h"

#include <QPainter>

#include <memory>
#include <vector>

class IWidget;
class QWidget;

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

/// What an instance looks like where nobody operates it: its visible elements, drawn one above the
/// other, outside of any scene. Not owned, its nodes may go first. GUI thread.
class InstancePicture
{
public:
    /// `content` is a window or a composition.
    InstancePicture(const Nodes::ConfigNode &content, const SceneContextPtr &context);
    ~InstancePicture();
    InstancePicture(const InstancePicture &) = delete;
    InstancePicture &operator=(const InstancePicture &) = delete;

    void setActive(bool on);
    /// In pixels of the content, the painter's origin at its corner.
    void draw(QPainter &painter) const;
    std::vector<QWidget *> elements() const;

private:
    void addElements(const Nodes::ConfigNode &parent, const SceneContextPtr &context);

    Nodes::NodeLink m_content;
    std::vector<std::unique_ptr<QWidget>> m_elements; ///< lowest first
};

} // namespace Widgets
