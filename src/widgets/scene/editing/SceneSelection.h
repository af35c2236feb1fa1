#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QRectF>

#include <map>

class QGraphicsScene;

namespace Widgets {

class ProxyWidget;

/// The selected elements of an edited scene in the order in which they were selected, which the
/// scene itself does not keep. One of them is the key element, by which the others are aligned: the
/// one clicked or selected last. Items are owned by the scene. GUI thread.
class WIDGETS_EXPORT SceneSelection : public QObject
{
    Q_OBJECT

public:
    enum enHow { Replace, Add, Toggle };

    explicit SceneSelection(QGraphicsScene &scene);
    ~SceneSelection() override;

    /// Those whose nodes exist.
    QList<ProxyWidget *> hosts() const;
    Nodes::NodeLinks links() const;
    int count() const { return m_serials.size(); }
    bool isEmpty() const { return m_serials.isEmpty(); }
    /// Null without a selection.
    ProxyWidget *key() const { return m_key; }
    /// Ignored for an element that is not selected.
    void setKey(ProxyWidget &host);
    /// Rectangle around them, scene pixels; null without any.
    QRectF rect() const;

    /// Of more selected elements than this only the key one has grabbers.
    static constexpr int GrabbersAtMost = 100;
    /// The selected ones that may have grabbers.
    QList<ProxyWidget *> grabbed() const;

    /// Every element of the scene that can be picked, lowest first.
    QList<ProxyWidget *> selectable() const;
    /// Ones that cannot be picked are passed over. The last one becomes the key element.
    void select(const QList<ProxyWidget *> &hosts, enHow how = Replace);
    void selectAll();
    void clear();
    /// Those of `selectable` at that place, topmost first.
    QList<ProxyWidget *> at(QPointF place) const;
    /// Of the elements that can be picked at that place the one below the topmost selected one; the
    /// topmost after the lowest. Null where there is none.
    ProxyWidget *selectBelow(QPointF place);

    /// The scene's items tell of themselves.
    void takeSelected(ProxyWidget &host, bool on);

signals:
    /// Once for a call of this class, else for each element.
    void changed();
    void keyChanged(Widgets::ProxyWidget *key);

private:
    void makeKey(ProxyWidget *host);
    void conclude();

    QGraphicsScene &m_scene;
    std::map<quint64, ProxyWidget *> m_order;
    QHash<ProxyWidget *, quint64> m_serials;
    ProxyWidget *m_key = nullptr;
    quint64 m_lastSerial = 0;
    bool m_isBusy = false;
    bool m_isChanged = false;
};

} // namespace Widgets
