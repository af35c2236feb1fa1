#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/elements/painting/DirectPainting.h"

#include "nodes/values/Connection.h"

#include <QPointer>
#include <QTransform>
#include <QWidget>

#include <memory>
#include <vector>

class QGraphicsProxyWidget;

namespace Nodes {
struct NodeChange;
class widgetInstance;
} // namespace Nodes

namespace Widgets {

class DisabledCover;
class InstanceNodes;
class InstancePicture;
class ProxyLayer;
class ProxyWidget;

/// A template on a screen. At run time its elements are items of their own below the element's
/// host, which operate as all others do; in the editor, and without a host, they are a picture that
/// follows the template. What cannot be shown is told by a crossed frame with the reason. GUI
/// thread.
class WIDGETS_EXPORT qwidgetInstance : public QWidget, public IWidget, public DirectPainting
{
    Q_OBJECT

public:
    using Node = Nodes::widgetInstance;

    qwidgetInstance(Nodes::BasicWidget *node, QWidget *parent,
                    const SceneContextPtr &context = SceneContext::process());
    ~qwidgetInstance() override;

    /// Item that the elements become children of; outlives this. Before the element is started.
    void setProxy(QGraphicsProxyWidget *host) { m_host = host; }
    /// Hosts of the elements; none while they are a picture.
    QList<ProxyWidget *> hosts() const;
    /// The window or composition shown; null when there is none.
    Nodes::ConfigNode *content() const;
    QString refusal() const;

    void paintDirectly(QPainter &painter) override;
    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

signals:
    /// What it draws is other than before.
    void redrawn();

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void refresh();
    void dropContent();
    void showLive();
    void showPicture();
    void takeEnabled(const Nodes::widgetInstance &node);
    void takeRoom(const Nodes::widgetInstance &node);
    void takeChange(const Nodes::NodeChange &change);
    void checkLater();
    void check();
    void tellMissing() const;
    void repaintAll();
    QTransform placed() const;

    SceneContextPtr m_context;
    Utils::WatchedNode<Nodes::widgetInstance> m_instance; ///< null also for another class
    QPointer<QGraphicsProxyWidget> m_host;
    std::unique_ptr<InstanceNodes> m_nodes;
    std::unique_ptr<InstancePicture> m_picture;
    std::vector<QPointer<ProxyLayer>> m_layers;
    QPointer<DisabledCover> m_cover; ///< of live elements
    bool m_isFitted = true;
    bool m_isOld = false; ///< the template has changed since
    bool m_isCheckDue = false;
    Nodes::ScopedConnection m_changes; ///< in the editor
    ElementBinding m_binding;
};

} // namespace Widgets
