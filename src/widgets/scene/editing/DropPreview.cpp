#include "widgets/scene/editing/DropPreview.h"

#include "widgets/scene/editing/DraggedNodes.h"
#include "widgets/scene/editing/EditOverlay.h"
#include "widgets/scene/editing/NewElements.h"
#include "widgets/scene/editing/guides/Snapper.h"

#include <QMimeData>

namespace Widgets {

namespace {

constexpr Qt::Edges allEdges =
    Qt::Edges(Qt::TopEdge | Qt::LeftEdge | Qt::RightEdge | Qt::BottomEdge);

QRect centredAt(QPointF at, QSize size)
{
    return {at.toPoint() - QPoint(size.width() / 2, size.height() / 2), size};
}

} // namespace

DropPreview::DropPreview(const SceneSelection &selection, Snapper &snapper, EditOverlay &overlay)
    : m_selection(selection), m_snapper(snapper), m_overlay(overlay)
{
}

void DropPreview::follow(const QMimeData &data, QPointF at)
{
    const QByteArray types = data.data(NewElements::typesFormat());
    if (types != m_data || !m_isActive) {
        m_data = types;
        const QStringList texts = DraggedNodes::texts(data, NewElements::typesFormat());
        m_size = texts.isEmpty() ? QSize()
                                 : NewElements::sizeOf(Nodes::NodeType(texts.first().toStdString()),
                                                       DroppedProperties::of(data));
    }
    if (m_size.isValid())
        (void)snapped(centredAt(at, m_size), true);
}

QPoint DropPreview::landing(const QRect &box)
{
    return snapped(box, false);
}

QPoint DropPreview::snapped(const QRect &box, bool isShown)
{
    if (!m_isActive)
        m_snapper.begin(m_selection, true);
    m_isActive = true;
    Guides guides;
    const QPoint shift = m_snapper.adjust(QRectF(box), QPointF(), allEdges, &guides).toPoint();
    guides.places.append(QRectF(box.translated(shift)));
    if (isShown)
        m_overlay.setGuides(guides);
    return box.topLeft() + shift;
}

void DropPreview::end()
{
    if (!m_isActive)
        return;
    m_isActive = false;
    m_snapper.end();
    m_overlay.setGuides({});
}

} // namespace Widgets
