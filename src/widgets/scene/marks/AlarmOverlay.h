#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/alarms/AlarmSummary.h"
#include "widgets/scene/marks/ElementOverlay.h"

namespace Widgets {

/// Shows on an element that its signal is in alarm: a frame around it, and a badge with shape and
/// number of the priority at its corner. Blinks until it is acknowledged; steady and hollow then;
/// dashed and grey when it is gone, not acknowledged. Of alarms that are shelved, suppressed or out
/// of service a small grey sign only. GUI thread.
class WIDGETS_EXPORT AlarmOverlay : public ElementOverlay
{
    Q_OBJECT

public:
    AlarmOverlay(ProxyWidget &element, const AlarmSummary &summary);

    const AlarmSummary &summary() const { return m_summary; }
    void setSummary(const AlarmSummary &summary);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

private:
    void follow(bool blinks);
    void repaint();
    void drawFrame(QPainter &painter, bool isLit) const;
    void drawBadge(QPainter &painter, bool isLit) const;
    void drawHiddenSign(QPainter &painter) const;

    AlarmSummary m_summary;
};

} // namespace Widgets
