#pragma once

class QWidget;

namespace Widgets {

class Plot;

/// How a plot looks while it is not at work.
namespace SampleLook {

/// Curves of no process, for where a chart is edited or previewed: how its series, axes and colours
/// go together. Whatever the series held is gone.
void draw(Plot &plot);

/// The plot and what is on it look the same disabled as enabled: it is so for moments only.
void keepLooksWhileDisabled(QWidget &plot);

} // namespace SampleLook

} // namespace Widgets
