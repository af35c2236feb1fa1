#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/GrabberFrame.h"

#include <QGraphicsItem>
#include <QPointer>

namespace Widgets {

class CornerGrabber;
class EditedScene;
class ProxyWidget;
class SceneGroups;
class SceneSelection;

/// Lies above a scene that is edited: draws the grabbers of the selected elements once more, on a
/// light ground, and takes the mouse for them, as elements above theirs would cover them. Where the
/// selection is one group it has eight grabbers of its own around that. Nothing else of it can be
/// hit. Owned by the editor. GUI thread.
class WIDGETS_EXPORT GrabberPlane : public QGraphicsItem
{
public:
    /// Puts itself into the scene. All outlive it.
    GrabberPlane(QGraphicsScene &scene, EditedScene *edited, const SceneSelection &selection,
                 const SceneGroups &groups);
    ~GrabberPlane() override;

    /// The selection, or the place of it, is another than before.
    void refresh();
    /// Whether a grabber of an element, or of the group, is there.
    bool hasGrabber(QPointF place) const;

    /// All places an element can have.
    QRectF boundingRect() const override;
    QPainterPath shape() const override;
    bool contains(const QPointF &point) const override;
    bool collidesWithPath(const QPainterPath &path, Qt::ItemSelectionMode mode) const override;
    void paint(QPainter *painter, const QStyleOptionGraphicsItem *option,
               QWidget *widget = nullptr) override;

protected:
    bool sceneEvent(QEvent *event) override;
    bool sceneEventFilter(QGraphicsItem *watched, QEvent *event) override;

private:
    /// The first of the elements' grabbers, and whose it is.
    CornerGrabber *grabberIn(const QRectF &area, ProxyWidget **host = nullptr) const;
    CornerGrabber *grabberAt(QPointF place, ProxyWidget **host = nullptr) const;
    void hover(const QPointF *place);

    EditedScene *m_edited; ///< null in a scene of others
    const SceneSelection &m_selection;
    const SceneGroups &m_groups;
    GrabberFrame m_own;           ///< of a group
    QPointer<ProxyWidget> m_host; ///< of the grabber that is held or below the pointer
    int m_corner = -1;            ///< of it
};

} // namespace Widgets
