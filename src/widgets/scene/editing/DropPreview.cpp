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
        m_sizes.clear();
        for (const QString &type : DraggedNodes::texts(data, NewElements::typesFormat())) {
            const QSize size = NewElements::sizeOf(Nodes::NodeType(type.toStdString()),
                                                   DroppedProperties::of(data));
            if (size.isValid())
                m_sizes.append(size);
        }
    }
    Guides shown;
    for (const QSize &size : qAsConst(m_sizes)) {
        const QRect box = centredAt(at, size);
        shown.places.append(QRect(snapped(box, shown), size));
    }
    if (!m_sizes.isEmpty())
        m_overlay.setGuides(shown);
}

QPoint DropPreview::landing(const QRect &box)
{
    Guides unseen;
    return snapped(box, unseen);
}

// To the same as each of the others: they do not see one another.
QPoint DropPreview::snapped(const QRect &box, Guides &guides)
{
    if (!m_isActive)
        m_snapper.begin(m_selection, true);
    m_isActive = true;
    return box.topLeft() + m_snapper.adjust(QRectF(box), QPointF(), allEdges, &guides).toPoint();
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
