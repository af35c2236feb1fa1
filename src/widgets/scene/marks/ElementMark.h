#pragma once

#include "widgets/WidgetsExport.h"

#include <QGraphicsObject>
#include <QPointer>
#include <QTimer>

namespace Widgets {

class ProxyWidget;

/// Draws the operator's eye to one element: a frame around it that blinks a few times, stands for a
/// while and goes by itself or by a press anywhere in the scene. Nothing of the element is covered.
/// Follows its place. An item of the element's scene. GUI thread.
class WIDGETS_EXPORT ElementMark : public QGraphicsObject
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

    const ProxyWidget *element() const { return m_element; }
    bool isLit() const { return m_changes % 2 == 0; }

    QRectF boundingRect() const override { return m_outline; }
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option, QWidget *widget) override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ElementMark(ProxyWidget &element);
    void follow();
    void onTick();

    QPointer<ProxyWidget> m_element;
    QRectF m_outline; // scene coordinates
    QTimer m_timer;
    int m_changes = 0;
};

} // namespace Widgets
