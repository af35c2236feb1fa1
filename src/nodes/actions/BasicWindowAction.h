#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

class BasicWindow;
class KindBuilder;

/// An action on a window of one display.
class NODES_EXPORT BasicWindowAction : public BasicAction
{
public:
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Window{16001, "window"};
        static constexpr PropertyId<int> Display{16002, "display"};
    };

    const NodeLink &GetWindowLink() const { return m_window; }
    /// Null when no window is set or it is gone.
    BasicWindow *GetWindow() const;
    /// 0: the display on which the action was triggered; n: display n.
    int GetDisplay() const { return m_display; }

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    NodeLink m_window;
    int m_display = 0;
};

} // namespace Nodes
