#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/DroppedProperties.h"

#include "nodes/model/NodeType.h"

#include <QStringList>

#include <vector>

class QMimeData;

namespace Nodes {
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Widgets {

/// Elements that a drop on a scene makes: kinds of the element panel, an instance for a template of
/// the project's tree, an image or symbol for a picture file of the desktop. GUI thread.
class WIDGETS_EXPORT DroppedElements
{
public:
    struct Element
    {
        Nodes::NodeType type;
        DroppedProperties::Texts properties;
    };

    /// Whether it makes any, told without reading files.
    static bool isIn(const QMimeData &data, const Nodes::NodesCollection &project);
    /// For that layer, window or composition. Copies picture files into the project.
    static DroppedElements of(const QMimeData &data, const Nodes::ConfigNode &owner);

    const std::vector<Element> &elements() const { return m_elements; }
    /// Russian, one for each file or template that makes none.
    const QStringList &refusals() const { return m_refusals; }

private:
    void addKinds(const QMimeData &data);
    void addTemplates(const QMimeData &data, const Nodes::ConfigNode &owner);
    void addPictures(const QMimeData &data, const Nodes::NodesCollection &project);

    std::vector<Element> m_elements;
    QStringList m_refusals;
};

} // namespace Widgets
