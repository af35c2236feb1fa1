#include "utils/undo/StepTexts.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/visual/BasicWidget.h"

namespace Utils {

namespace {

bool isElement(const Nodes::NodeLink &node)
{
    return dynamic_cast<const Nodes::BasicWidget *>(node.GetNode()) != nullptr;
}

} // namespace

QString StepTexts::ofNode(const Nodes::NodeLink &node)
{
    return isElement(node) ? QStringLiteral("виджета") : QStringLiteral("узла");
}

QString StepTexts::toNode(const Nodes::NodeLink &node)
{
    return isElement(node) ? QStringLiteral("виджету") : QStringLiteral("узлу");
}

} // namespace Utils
