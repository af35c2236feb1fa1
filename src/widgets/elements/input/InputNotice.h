#pragma once

#include "widgets/WidgetsExport.h"

#include <QRect>

class QLabel;
class QString;
class QWidget;

namespace Widgets {

/// A short word to the operator about what became of an input: stands beside the element for some
/// seconds, covers as little as it can, takes neither focus nor clicks, and gives way to the next.
/// GUI thread.
class WIDGETS_EXPORT InputNotice
{
public:
    /// The text is shown letter by letter, never as markup.
    static void show(const QWidget &element, const QString &text);
    /// The one that stands now; null without one.
    static QLabel *current();
    /// Where the element is seen, in screen coordinates, also inside a scene.
    static QRect globalRect(const QWidget &element);
};

} // namespace Widgets
