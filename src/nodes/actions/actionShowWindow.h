#pragma once

#include "nodes/actions/BasicPlacingAction.h"

namespace Nodes {

/// Opens a window or brings one forward that is open already.
class NODES_EXPORT actionShowWindow : public BasicPlacingAction
{
public:
    enum enOpenMode { OpenAlways = 0, OpenReuseOnDisplay = 1, OpenReuseAnywhere = 2 };

    static KindInfo Kind();
    enOpenMode GetOpenMode() const { return enOpenMode(m_openMode); }

private:
    int m_openMode = OpenReuseOnDisplay;
};

} // namespace Nodes
