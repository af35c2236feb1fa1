#pragma once

#include "widgets/WidgetsExport.h"

#include <QSize>

class QWidget;

namespace Widgets {

/// A window around another one, which is its child: it is moved, shown and closed in its place.
/// GUI thread.
class WIDGETS_EXPORT WindowDecoration
{
public:
    virtual ~WindowDecoration() = default;

    /// What `window` (may be null) stands in; null when it has no decoration.
    static const WindowDecoration *around(const QWidget *window);

    /// Outer size around a hosted widget of that size.
    virtual QSize outerSize(const QSize &client) const = 0;
};

} // namespace Widgets
