#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/marks/ElementOverlay.h"

#include <QTimer>

namespace Widgets {

/// Draws the operator's eye to one element: a frame around it that blinks a few times, stands for a
/// while and goes by itself or by a press anywhere in the scene. Nothing of the element is covered,
/// unless it lies at the edge of the scene. GUI thread.
class WIDGETS_EXPORT ElementMark : public ElementOverlay
{
    Q_OBJECT

public:
    static constexpr int BlinkInterval = 250; ///< ms, on or off
    static constexpr int Blinks = 12;         ///< changes before it stands still
    static constexpr int StandingTime = 5000; ///< ms after that

    /// In place of another one in that scene; null when the element stands in none.
    static ElementMark *put(ProxyWidget &element);
    /// The one in the scene; null without one.
    static ElementMark *in(const QGraphicsScene &scene);

    bool isLit() const { return m_changes % 2 == 0; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ElementMark(ProxyWidget &element);
    void onTick();

    QTimer m_timer;
    int m_changes = 0;
};

} // namespace Widgets
