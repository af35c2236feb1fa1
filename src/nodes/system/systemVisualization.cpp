#include "nodes/system/systemVisualization.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo systemVisualization::Kind()
{
    return KindBuilder::For<systemVisualization>(NodeType::enNodeSubtype(0x7001), "visualization",
                                                 "Visualisation", "Визуализация")
        .Property<&systemVisualization::m_titleHeight>(7101, "titleHeight", "Title height",
                                                       "Высота заголовка окна")
        .Range(16, 64)
        .Property<&systemVisualization::m_overlayColor>(7102, "overlayColor", "Overlay colour",
                                                        "Цвет затенения")
        .Property<&systemVisualization::m_idleLogout>(7103, "idleLogout", "Idle log-out, s",
                                                      "Выход по бездействию, с")
        .Range(0, 86400);
}

} // namespace Nodes
