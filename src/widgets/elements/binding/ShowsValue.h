#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/values/Quality.h"

#include <QString>
#include <Qt>

class QPainter;
class QRect;

namespace Nodes {
class BasicWidget;
class SignalValue;
} // namespace Nodes

namespace Widgets {

/// Carried by elements that show a live value: what the operator sees of it now, which lags behind
/// the signal by the way through the event loop. GUI thread.
class WIDGETS_EXPORT ShowsValue
{
public:
    virtual ~ShowsValue();

    virtual QString shownText() const = 0;
    /// Quality as it is drawn; Good for an element without a signal.
    virtual Nodes::Quality shownQuality() const { return m_quality; }

protected:
    /// The one value to show: that handed over or, when it is empty, the node's of now. Publishers
    /// do not wait, so that text, number, state and colours all have to come of what is returned.
    /// Its quality is taken over. Where the element is edited, what has no good value gets a
    /// stand-in of good quality: marks would hide what is being drawn.
    Nodes::SignalValue take(const Nodes::BasicWidget &node, const Nodes::SignalValue &handed,
                            bool isEdited);
    /// The value taken last is no value, but EditedValue::of.
    bool isStandIn() const { return m_isStandIn; }
    void drawQualityMark(QPainter &painter, const QRect &rect, Qt::Alignment alignment) const;

    Nodes::Quality m_quality = Nodes::Quality::Good;

private:
    bool m_isStandIn = false;
};

} // namespace Widgets
