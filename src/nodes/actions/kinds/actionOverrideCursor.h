#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// Gives the whole application another pointer until it is restored.
class NODES_EXPORT actionOverrideCursor : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x10010);
    struct Prop
    {
        static constexpr PropertyId<int> Cursor{16070, "cursor"};
    };

    enum enCursor {
        CursorWait = 0,
        CursorBusy = 1,
        CursorCross = 2,
        CursorForbidden = 3,
        CursorHand = 4,
        CursorHelp = 5,
        CursorBlank = 6
    };

    static KindInfo Kind();
    enCursor GetCursor() const { return enCursor(m_cursor); }

private:
    int m_cursor = CursorWait;
};

} // namespace Nodes
