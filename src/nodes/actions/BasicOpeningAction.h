#pragma once

#include "nodes/actions/BasicPlacingAction.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

/// An action that opens a window or brings forward one that is open already.
class NODES_EXPORT BasicOpeningAction : public BasicPlacingAction
{
public:
    struct Prop : BasicPlacingAction::Prop
    {
        static constexpr PropertyId<int> Open{16010, "open"};
    };

    enum enOpenMode { OpenAlways = 0, OpenReuseOnDisplay = 1, OpenReuseAnywhere = 2 };

    enOpenMode GetOpenMode() const { return enOpenMode(m_openMode); }

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    int m_openMode = OpenReuseOnDisplay;
};

} // namespace Nodes
