#pragma once

#include "nodes/model/links/NodeLink.h"

namespace Widgets {

/// A window with a trend of signals that were chosen while the station runs. GUI thread.
class TrendView
{
public:
    static constexpr const char *Key = "trend"; ///< of the dialog that is one

    virtual ~TrendView() = default;

    /// Shows these from now on. `isOwn`: it is the trend that the current user keeps.
    virtual void setSignals(const Nodes::NodeLinks &shown, bool isOwn) = 0;
};

} // namespace Widgets
