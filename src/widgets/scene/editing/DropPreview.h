#pragma once

#include <QByteArray>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QVector>

class QMimeData;

namespace Widgets {

class EditOverlay;
class SceneSelection;
class Snapper;
struct Guides;

/// While a new element is dragged over a scene: where it would come to, snapped as anything that is
/// dragged there, and shown. GUI thread.
class DropPreview
{
public:
    /// All outlive it.
    DropPreview(const SceneSelection &selection, Snapper &snapper, EditOverlay &overlay);

    /// Shows where the dragged elements would stand with their centres at the point, in scene
    /// pixels. Data of no element shows nothing.
    void follow(const QMimeData &data, QPointF at);
    /// Place of an element that is let go there instead of `box`.
    QPoint landing(const QRect &box);
    void end();

private:
    QPoint snapped(const QRect &box, Guides &guides);

    const SceneSelection &m_selection;
    Snapper &m_snapper;
    EditOverlay &m_overlay;
    QByteArray m_data; ///< what the sizes are of
    QVector<QSize> m_sizes;
    bool m_isActive = false;
};

} // namespace Widgets
