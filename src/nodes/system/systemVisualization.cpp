#include "nodes/system/systemVisualization.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo systemVisualization::Kind()
{
    return KindBuilder::For<systemVisualization>("visualization", "Visualisation", "Визуализация")
        .Property<&systemVisualization::m_titleHeight>(Prop::TitleHeight, "Title height",
                                                       "Высота заголовка окна")
        .Range(16, 64)
        .Property<&systemVisualization::m_overlayColor>(Prop::OverlayColor, "Overlay colour",
                                                        "Цвет затенения")
        .Property<&systemVisualization::m_idleLogout>(Prop::IdleLogout, "Idle log-out, s",
                                                      "Выход по бездействию, с")
        .Range(0, 86400);
}

} // namespace Nodes
