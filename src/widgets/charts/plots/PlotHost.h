#pragma once

namespace Widgets {

class SceneContext;

/// What stands on a plot asks of the chart around it. GUI thread.
class PlotHost
{
public:
    virtual ~PlotHost() = default;

    /// Of the scene that shows the chart.
    virtual const SceneContext &context() const = 0;
    /// Values and history come: run time, and not a preview.
    virtual bool isAtWork() const = 0;
    /// Draws soon, once for all that ask.
    virtual void scheduleReplot() = 0;
};

} // namespace Widgets
