#pragma once

#include <QWidget>

namespace Widgets {

/// Shows or hides an element as its state wants. Never on the display: what nobody hosts yet would
/// come up as a window of its own. GUI thread.
inline void setVisibleByState(QWidget &element, bool isVisible)
{
    if (isVisible && element.isWindow())
        element.setAttribute(Qt::WA_DontShowOnScreen); // as for all that a scene hosts
    element.setVisible(isVisible);
}

} // namespace Widgets
