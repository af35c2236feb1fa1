#pragma once

#include "nodes/actions/BasicWindowAction.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NPoint.h"

namespace Nodes {

/// An action that puts a window at a place on its display.
class NODES_EXPORT BasicPlacingAction : public BasicWindowAction
{
public:
    struct Prop : BasicWindowAction::Prop
    {
        static constexpr PropertyId<int> Position{16003, "position"};
        static constexpr PropertyId<int> X{16004, "x"};
        static constexpr PropertyId<int> Y{16005, "y"};
    };

    enum enPositionMode { PositionOwn = 0, PositionPoint = 1, PositionCenter = 2 };

    enPositionMode GetPositionMode() const { return enPositionMode(m_positionMode); }
    /// Place for PositionPoint, pixels from the display's corner.
    NPoint GetPoint() const { return {m_x, m_y}; }

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    int m_positionMode = PositionOwn;
    int m_x = 0;
    int m_y = 0;
};

} // namespace Nodes
