#include "nodes/actions/BasicPlacingAction.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicPlacingAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWindowAction>()
        .Property<&BasicPlacingAction::m_positionMode>(16003, "position", "Position", "Положение")
        .Choice(PositionOwn, "own", "Из окна")
        .Choice(PositionPoint, "point", "В точке")
        .Choice(PositionCenter, "center", "По центру экрана")
        .Property<&BasicPlacingAction::m_x>(16004, "x", "X", "X")
        .Property<&BasicPlacingAction::m_y>(16005, "y", "Y", "Y");
}

} // namespace Nodes
