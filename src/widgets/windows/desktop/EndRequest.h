#pragma once

#include "widgets/WidgetsExport.h"

namespace Nodes {
class ConfigNode;
}

namespace Widgets {

/// An operator's wish to end the station, by closing one of its frames: a frame that is gone alone
/// could not be called back. GUI thread.
class WIDGETS_EXPORT EndRequest
{
public:
    /// Needs the right to configure the frame, asks for confirmation and ends the application. A
    /// refusal is told and journalled, an end journalled with the user. Waits for nothing.
    static void ask(Nodes::ConfigNode &frame);
};

} // namespace Widgets
