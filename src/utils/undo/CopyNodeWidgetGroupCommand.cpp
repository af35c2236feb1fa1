#include "utils/undo/CopyNodeWidgetGroupCommand.h"

#include "nodes/visual/BasicWidget.h"

#include <algorithm>
#include <climits>
#include <vector>

namespace Utils {

namespace {

void moveTo(const QPoint &point, const Nodes::NodesArray &nodes)
{
    std::vector<Nodes::BasicWidget *> elements;
    QPoint corner(INT_MAX, INT_MAX);
    for (const Nodes::NodeLink &link : nodes) {
        auto *element = dynamic_cast<Nodes::BasicWidget *>(link.GetNode());
        if (!element)
            continue;
        const Nodes::NPoint at = element->GetPosition();
        corner = QPoint(std::min(corner.x(), at.x), std::min(corner.y(), at.y));
        elements.push_back(element);
    }
    for (Nodes::BasicWidget *element : elements) {
        const Nodes::NPoint at = element->GetPosition();
        element->SetPosition(at.x - corner.x() + point.x(), at.y - corner.y() + point.y());
    }
}

} // namespace

CopyNodeWidgetGroupCommand::CopyNodeWidgetGroupCommand(const Nodes::NodeLink &layer,
                                                       const Nodes::NodesArray &clones,
                                                       const QPoint &point, QUndoCommand *parent)
    : NodeCommand(parent)
{
    for (const Nodes::NodeLink &clone : clones)
        m_nodes.add(clone, layer);
    moveTo(point, clones);
    setText(clones.size() == 1 ? QStringLiteral("Копирование виджета %1")
                                     .arg(QString::fromStdString(clones[0].GetLinkName()))
                               : QStringLiteral("Копирование группы виджетов"));
}

CopyNodeWidgetGroupCommand::~CopyNodeWidgetGroupCommand() = default;

Nodes::Result CopyNodeWidgetGroupCommand::apply()
{
    if (m_nodes.isEmpty())
        return Nodes::Result(Nodes::Result::NotFound, "no node to insert");
    return m_nodes.insert();
}

} // namespace Utils
