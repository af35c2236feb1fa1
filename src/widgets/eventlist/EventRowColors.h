#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>

namespace Nodes {
class BasicNode;
}

namespace Widgets {

/// Background and text of a row. A value.
struct WIDGETS_EXPORT EventRowColors
{
    QColor background = Qt::white;
    QColor text = Qt::black;

    /// As configured on the source of an event; black on white for null and for a node without
    /// colours of its own. Where both are the same, the text gets one that can be read. GUI thread.
    static EventRowColors of(const Nodes::BasicNode *source);
    /// Those two, the text made readable where they are equal.
    static EventRowColors of(const QColor &background, const QColor &text);
    /// A colour of text that stands out on that background.
    static QColor readableOn(const QColor &background);
};

} // namespace Widgets
