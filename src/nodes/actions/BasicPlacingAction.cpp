#include "nodes/actions/BasicPlacingAction.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicPlacingAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicWindowAction>()
        .Property<&BasicPlacingAction::m_positionMode>(Prop::Position, "Position", "Положение")
        .Choice(PositionOwn, "own", "Из окна")
        .Choice(PositionPoint, "point", "В точке")
        .Choice(PositionCenter, "center", "По центру экрана")
        .Property<&BasicPlacingAction::m_x>(Prop::X, "X", "X")
        .Range(-32768, 32767)
        .Property<&BasicPlacingAction::m_y>(Prop::Y, "Y", "Y")
        .Range(-32768, 32767);
}

} // namespace Nodes
