#include "widgets/scene/editing/guides/Snapper.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Guides.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/guides/SnapSettings.h"

#include <QGraphicsScene>
#include <QGraphicsView>
#include <QGuiApplication>

#include <cmath>

namespace Widgets {

namespace {

void show(const SnapResult &result, Guides &shown)
{
    shown.lines += result.guides;
    shown.lines += result.gaps;
    for (const QLineF &gap : result.gaps) {
        if (gap.length() > 0)
            shown.notes.append({gap.center(), QString::number(qRound(gap.length()))});
    }
}

} // namespace

Snapper::Snapper(const QGraphicsScene &scene, const SnapSettings &settings, Modifiers modifiers)
    : m_scene(scene),
      m_settings(settings),
      m_modifiers(modifiers ? std::move(modifiers) : &QGuiApplication::keyboardModifiers)
{
}

void Snapper::begin(const SceneSelection &selection, bool areStanding)
{
    QVector<QRectF> standing{m_scene.sceneRect()}; // edges and middle of the window itself
    const QList<ProxyWidget *> all = selection.selectable();
    for (const ProxyWidget *host : all) {
        if (host->isVisible() && (areStanding || !host->isSelected()))
            standing.append(host->geometry());
    }
    m_snapping.emplace(standing);
}

QPointF Snapper::adjust(const QRectF &moved, QPointF delta, Qt::Edges movingEdges, Guides *shown)
{
    if (!m_snapping || !m_settings.isOffered() || m_modifiers().testFlag(Qt::AltModifier))
        return delta;
    const SnapResult result = m_snapping->snap(moved, movingEdges, options());
    show(result, *shown);
    return delta + result.shift;
}

void Snapper::end()
{
    m_snapping.reset();
}

SnapOptions Snapper::options() const
{
    SnapOptions options = m_settings.options();
    const QGraphicsView *view = m_scene.views().value(0);
    if (!view)
        return options;
    const double scale = std::abs(view->transform().m11());
    if (scale > 0)
        options.distance /= scale;
    options.visible = view->mapToScene(view->viewport()->rect()).boundingRect();
    return options;
}

} // namespace Widgets
