#pragma once

#include <QList>

class QWidget;
class QwtInterval;

namespace Widgets {

class ISerie;

/// How a plot looks while it is not at work.
namespace SampleLook {

/// Curves of no process, for where a chart is edited or previewed: how its series, axes and colours
/// go together. Whatever the series held is gone.
void draw(const QList<ISerie *> &series, const QwtInterval &window);

/// The plot and what is on it look the same disabled as enabled: it is so for moments only.
void keepLooksWhileDisabled(QWidget &plot);

} // namespace SampleLook

} // namespace Widgets
