#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/DragAdjuster.h"
#include "widgets/scene/editing/guides/Snapping.h"

#include <functional>
#include <optional>

class QGraphicsScene;

namespace Widgets {

class SnapSettings;

/// Draws what is dragged in a scene to the grid and to the elements that stand still, and shows to
/// what. Elements draw within 6 pixels of the screen at any zoom, and only those in the view. Alt
/// suspends it. GUI thread.
class WIDGETS_EXPORT Snapper : public DragAdjuster
{
public:
    using Modifiers = std::function<Qt::KeyboardModifiers()>;

    /// Both outlive it. `modifiers` are those held now; none: the keyboard's.
    Snapper(const QGraphicsScene &scene, const SnapSettings &settings, Modifiers modifiers = {});

    void begin(const SceneSelection &moving) override { begin(moving, false); }
    /// With `areStanding` the selected elements stand still too: something else is dragged.
    void begin(const SceneSelection &selection, bool areStanding);
    QPointF adjust(const QRectF &moved, QPointF delta, Qt::Edges movingEdges,
                   Guides *shown) override;
    void end() override;

private:
    SnapOptions options() const;

    const QGraphicsScene &m_scene;
    const SnapSettings &m_settings;
    Modifiers m_modifiers;
    std::optional<Snapping> m_snapping; ///< while something is dragged
};

} // namespace Widgets
