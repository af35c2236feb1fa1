#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/Guides.h"

#include <QGraphicsItem>

namespace Widgets {

class SceneGroups;
class SceneSelection;

/// The one item that draws what editing adds to a scene as a whole, above everything: the frames of
/// selected elements that have no grabbers, of groups and of the key element, the guides of a drag.
/// It takes no input and nothing of it can be hit. Owned by the editor; a scene at run time has
/// none. GUI thread.
class WIDGETS_EXPORT EditOverlay : public QGraphicsItem
{
public:
    /// Puts itself into the scene. Both outlive it.
    EditOverlay(QGraphicsScene &scene, const SceneSelection &selection, const SceneGroups &groups);
    ~EditOverlay() override;

    const Guides &guides() const { return m_guides; }
    void setGuides(const Guides &guides);
    /// The selected elements but the key one have no grabbers and are framed here.
    void setFramed(bool on);
    /// Something about the selection is another than before.
    void refresh();

    /// All places an element can have, whatever is drawn.
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

private:
    void paintFrames(QPainter &painter) const;
    void paintGroups(QPainter &painter, const QVector<QRectF> &groups) const;
    void paintKey(QPainter &painter) const;
    void paintGuides(QPainter &painter) const;

    const SceneSelection &m_selection;
    const SceneGroups &m_groups;
    Guides m_guides;
    bool m_isFramed = false;
};

} // namespace Widgets
