#pragma once

#include "nodes/actions/BasicAction.h"

namespace Nodes {

/// Gives the whole application another pointer until it is restored.
class NODES_EXPORT actionOverrideCursor : public BasicAction
{
public:
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
