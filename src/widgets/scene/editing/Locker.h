#pragma once

#include "widgets/scene/editing/GraphicsItem.h"

class QGraphicsPixmapItem;

namespace Widgets {

/// Lock at the corner of an element in the editor: closed while the element cannot be moved. A
/// click turns it over. Shown while the element is selected or locked. GUI thread.
class WIDGETS_EXPORT Locker : public GraphicsItem
{
    Q_OBJECT

public:
    explicit Locker(QGraphicsItem *parent = nullptr);
    ~Locker() override;

    bool isLocked() const { return m_isLocked; }
    /// The element got selected or lost the selection.
    void setOwnerSelected(bool on);
    /// Hides the lock whatever its state: the element is too small to carry one.
    void setSuppressed(bool on);

    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

public slots:
    void setLock(bool lock);

signals:
    void lockChanged(bool lock);

protected:
    void mousePressEvent(QGraphicsSceneMouseEvent *event) override;

private:
    void showState();
    void updateVisibility();

    QGraphicsPixmapItem *m_picture; // child item
    bool m_isLocked = false;
    bool m_isSuppressed = false;
    bool m_isOwnerSelected = false;
};

} // namespace Widgets
