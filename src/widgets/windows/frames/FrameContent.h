#pragma once

namespace Widgets {

/// What a widget that stands inside a decorated window has to say when an operator closes that.
class FrameContent
{
public:
    virtual ~FrameContent() = default;

    /// An operator wants to close it. True when it sees to that itself and the window has to stay.
    virtual bool requestEnd() = 0;
};

} // namespace Widgets
