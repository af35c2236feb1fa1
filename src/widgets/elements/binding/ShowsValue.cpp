#include "widgets/elements/binding/ShowsValue.h"

#include "widgets/elements/binding/EditedValue.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/visual/BasicWidget.h"

namespace Widgets {

ShowsValue::~ShowsValue() = default;

Nodes::SignalValue ShowsValue::take(const Nodes::BasicWidget &node,
                                    const Nodes::SignalValue &handed, bool isEdited)
{
    Nodes::SignalValue value = handed.IsEmpty() ? node.GetValue() : handed;
    m_isStandIn = isEdited && !node.GetSignalLink().isEmpty() && !value.IsGood();
    if (m_isStandIn)
        value = EditedValue::of(node);
    m_quality = node.GetSignalLink().isEmpty() ? Nodes::Quality::Good : value.GetQuality();
    return value;
}

void ShowsValue::drawQualityMark(QPainter &painter, const QRect &rect,
                                 Qt::Alignment alignment) const
{
    ElementPainting::drawQualityMark(painter, rect, m_quality, alignment);
}

} // namespace Widgets
