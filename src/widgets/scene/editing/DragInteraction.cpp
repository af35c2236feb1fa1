#include "widgets/scene/editing/DragInteraction.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/DragAdjuster.h"
#include "widgets/scene/editing/EditOverlay.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/groups/RectScale.h"

#include <algorithm>

namespace Widgets {

namespace {

constexpr Qt::Edges allEdges =
    Qt::Edges(Qt::TopEdge | Qt::LeftEdge | Qt::RightEdge | Qt::BottomEdge);

// Elements stand on whole pixels, at any zoom.
QPointF wholePixels(QPointF delta)
{
    return QPointF(delta.toPoint());
}

} // namespace

DragInteraction::DragInteraction(SceneSelection &selection, EditOverlay &overlay)
    : m_selection(selection), m_overlay(overlay)
{
}

DragInteraction::~DragInteraction() = default;

void DragInteraction::addAdjuster(DragAdjuster &adjuster)
{
    m_adjusters.push_back(&adjuster);
}

void DragInteraction::removeAdjuster(DragAdjuster &adjuster)
{
    m_adjusters.erase(std::remove(m_adjusters.begin(), m_adjusters.end(), &adjuster),
                      m_adjusters.end());
}

void DragInteraction::follow(const DragMotion &motion)
{
    if (!m_isActive)
        begin(motion);
    apply(adjusted(wholePixels(motion.to - motion.from)));
}

void DragInteraction::begin(const DragMotion &motion)
{
    m_isActive = true;
    m_delta = QPointF();
    m_isMove = motion.corner == NoCorner;
    m_isScale = !m_isMove && !motion.host;
    m_edges = m_isMove ? allEdges : cornerEdges(motion.corner);
    collect(motion);
    m_from = QRectF();
    for (const Moved &moved : m_moved)
        m_from |= moved.from;
    for (DragAdjuster *adjuster : m_adjusters)
        adjuster->begin(m_selection);
    emit started();
}

// One that is not movable is resized all the same, by its own grabbers.
void DragInteraction::collect(const DragMotion &motion)
{
    const QList<ProxyWidget *> dragged =
        m_isMove || m_isScale ? m_selection.hosts() : QList<ProxyWidget *>{motion.host};
    for (ProxyWidget *host : dragged) {
        const bool isMovable = host->flags() & QGraphicsItem::ItemIsMovable;
        if (isMovable || !(m_isMove || m_isScale))
            m_moved.push_back({host, host->geometry()});
    }
}

QPointF DragInteraction::adjusted(QPointF delta)
{
    Guides guides;
    for (DragAdjuster *adjuster : m_adjusters)
        delta = adjuster->adjust(placed(m_from, delta), delta, m_edges, &guides);
    m_overlay.setGuides(guides);
    return wholePixels(delta);
}

QRectF DragInteraction::placed(const QRectF &from, QPointF delta) const
{
    return m_isMove ? from.translated(delta) : movedEdges(from, m_edges, delta);
}

void DragInteraction::apply(QPointF delta)
{
    if (delta == m_delta)
        return;
    m_delta = delta;
    const RectScale scale(m_from, placed(m_from, delta));
    for (const Moved &moved : m_moved)
        place(moved, m_isScale ? scale.mapped(moved.from) : placed(moved.from, delta));
    emit moved();
}

void DragInteraction::place(const Moved &moved, const QRectF &rect) const
{
    if (!moved.host)
        return;
    if (m_isMove)
        moved.host->setPos(rect.topLeft());
    else
        moved.host->setEditedGeometry(rect);
}

void DragInteraction::finish()
{
    if (m_isActive)
        end();
}

bool DragInteraction::cancel()
{
    if (!m_isActive)
        return false;
    apply(QPointF());
    end();
    return true;
}

void DragInteraction::end()
{
    m_isActive = false;
    m_moved.clear();
    m_overlay.setGuides({});
    for (DragAdjuster *adjuster : m_adjusters)
        adjuster->end();
    emit finished();
}

} // namespace Widgets
