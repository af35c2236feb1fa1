#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/IdleDeleter.h"

#include "nodes/model/NodeType.h"
#include "utils/relay/NodeRelay.h"

#include <QGraphicsView>
#include <QPointer>
#include <QVector>

namespace Nodes {
class BasicProperty;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class Border;
class ProxyScene;
class SceneContext;

/// Shows the scene of a window, composition or layer node. At run time it neither scrolls nor
/// zooms: one scene unit is one pixel. In the configurator it pans, zooms and selects by rubber
/// band. The node is not owned. GUI thread.
class WIDGETS_EXPORT ProxyView : public QGraphicsView, public IdleDeleter
{
    Q_OBJECT

public:
    /// Takes title and object name from the node, which may be null; shows no scene yet.
    ProxyView(Nodes::ConfigNode *node, QWidget *parent);
    ~ProxyView() override;

    /// Builds the node's scene as a child of the view and shows it. Null with a message to the
    /// operator when it cannot; the view then keeps what it shows. The scene shown before is left
    /// to the caller, who may keep it or delete it.
    ProxyScene *setScene(Nodes::ConfigNode *node);
    /// Shows a scene built before for `node` (a kept one).
    void showScene(ProxyScene *scene, Nodes::ConfigNode *node);
    /// Null when nothing is shown.
    ProxyScene *proxyScene() const;
    /// That of the scene shown; the process's while there is none.
    const SceneContext &context() const;

    /// Icon of an element type for editors; null when there is none.
    static QPixmap getPixmapWidget(Nodes::NodeType type);

    bool isIdle() const override { return m_eventDepth == 0; }
    /// For the view itself, what it shows or stands in.
    void deleteWhenIdle(QObject *object) override;

    QSize sizeHint() const override;
    /// The hint becomes 2 pixels less in each dimension: the view's own frame.
    void setSizeHint(QSize size);
    QSize minimumSizeHint() const override;

signals:
    void updateProperty(Nodes::BasicProperty *property);

public slots:
    void onUpdateProperties(Nodes::BasicProperty *pProperty);

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    /// Whether wheel and middle button may show another part of the scene: while it is edited.
    virtual bool canScroll() const;

private:
    class EventDepth;

    ProxyScene *createScene(Nodes::ConfigNode *node);
    void takeMode();
    void makeBorder();
    void placeBorder();
    void pinScrollBars();
    /// Whether that press begins a rubber band: it meets nothing that can be picked.
    bool beginsBand(const QMouseEvent &press) const;
    void zoom(bool isCloser, QPoint at);

    QSize m_sizeHint;
    QPointer<Border> m_border; // owned by the scene shown; null at run time
    Utils::NodeRelay m_relay;
    double m_paintedScale = 1;
    int m_eventDepth = 0;
    QVector<QPointer<QObject>> m_dueObjects; // to be deleted when idle
    int m_lastX = 0;
    int m_lastY = 0;
};

} // namespace Widgets
