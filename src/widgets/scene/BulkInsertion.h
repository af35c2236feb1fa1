#pragma once

#include <QGraphicsScene>
#include <QGraphicsWidget>

namespace Widgets {

/// Keeps the insertion of many child widgets below one parent item linear. For each new child Qt
/// walks the tab order from the parent through all children present, to find their end; an anchor
/// that is no child, kept right behind the parent, ends that walk at once. The children's tab
/// order is the order of insertion, as it is without this. Does nothing for a parent outside of
/// any scene, where the tab order cannot be set.
class BulkInsertion
{
public:
    explicit BulkInsertion(QGraphicsWidget &parent) : m_scene(parent.scene())
    {
        if (!m_scene)
            return;
        m_scene->addItem(&m_anchor);
        QGraphicsWidget::setTabOrder(&parent, &m_anchor);
    }
    BulkInsertion(const BulkInsertion &) = delete;
    BulkInsertion &operator=(const BulkInsertion &) = delete;

    /// To be told of each child, null ones excepted, before the next one is made.
    void inserted(QGraphicsWidget *child)
    {
        if (!child || !m_scene)
            return;
        QGraphicsWidget::setTabOrder(m_last, child);
        m_last = child;
    }

private:
    QGraphicsScene *m_scene;
    QGraphicsWidget m_anchor;
    QGraphicsWidget *m_last = &m_anchor;
};

} // namespace Widgets
