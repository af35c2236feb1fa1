#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPoint>

#include <functional>

class QAbstractScrollArea;

namespace Editor {

/// Scrolls a view on while something in it is dragged beyond its edge, the faster the farther; what
/// is dragged follows, as the view repeats the last motion of the mouse. GUI thread.
class EdgeScroll : public QObject
{
public:
    /// The view outlives it. `isDragging` is asked before each step.
    EdgeScroll(QAbstractScrollArea &view, std::function<bool()> isDragging);

    /// The pointer is there, in pixels of the view's viewport.
    void follow(const QPoint &pointer);

private:
    void timerEvent(QTimerEvent *event) override;
    QPoint step() const;

    QAbstractScrollArea &m_view;
    std::function<bool()> m_isDragging;
    QPoint m_pointer;
    QBasicTimer m_timer;
};

} // namespace Editor
