#pragma once

#include <QGraphicsScene>
#include <QGraphicsWidget>
#include <QPointer>

namespace Widgets {

/// Keeps the insertion of many child widgets below one parent item linear. For each new child Qt
/// walks the tab order from the parent through all children present, to find their end; an anchor
/// that is no child, kept right behind the parent, ends that walk at once. The children's tab
/// order is the order of insertion, as it is without this. Does nothing for a parent outside of
/// any scene, where the tab order cannot be set.
class BulkInsertion
{
public:
    /// `last` is the child that ends the tab order of those present; null when there are none.
    explicit BulkInsertion(QGraphicsWidget &parent, QGraphicsWidget *last = nullptr)
    {
        if (!parent.scene())
            return;
        m_anchor = new QGraphicsWidget;
        parent.scene()->addItem(m_anchor);
        QGraphicsWidget::setTabOrder(&parent, m_anchor);
        m_last = last ? last : m_anchor.data();
    }
    ~BulkInsertion() { delete m_anchor; }
    BulkInsertion(const BulkInsertion &) = delete;
    BulkInsertion &operator=(const BulkInsertion &) = delete;

    /// To be told of each child, null ones excepted, before the next one is made. No child may
    /// leave the parent as long as this lives.
    void inserted(QGraphicsWidget *child)
    {
        if (!child || !m_anchor)
            return;
        QGraphicsWidget::setTabOrder(m_last, child);
        m_last = child;
    }

private:
    QPointer<QGraphicsWidget> m_anchor; // a scene that goes first takes it along
    QGraphicsWidget *m_last = nullptr;
};

} // namespace Widgets
