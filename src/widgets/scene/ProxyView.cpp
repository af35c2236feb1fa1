#include "widgets/scene/ProxyView.h"

#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/editing/Border.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"
#include "utils/convert/MetaTypes.h"

#include <QEvent>
#include <QScrollBar>

#include <utility>

namespace Widgets {

namespace {

void warn(const Nodes::ConfigNode *node, const char *text)
{
    ActionSink &actions = SceneContext::process()->actions();
    if (node)
        actions.journalOnce(*node, text);
    actions.notify(QString::fromUtf8(text));
}

QString nameOf(const Nodes::ConfigNode *node)
{
    return node ? QString::fromStdString(node->GetName()) : QString();
}

} // namespace

/// Marks the view busy as long as it lives; the view may go before it.
class ProxyView::EventDepth
{
public:
    explicit EventDepth(ProxyView &view) : m_view(&view) { ++view.m_eventDepth; }
    ~EventDepth()
    {
        if (!m_view || --m_view->m_eventDepth > 0)
            return;
        for (const QPointer<QObject> &object : std::exchange(m_view->m_dueObjects, {})) {
            if (object)
                object->deleteLater();
        }
    }

private:
    QPointer<ProxyView> m_view;
};

ProxyView::ProxyView(Nodes::ConfigNode *node, QWidget *parent) : QGraphicsView(parent)
{
    setAttribute(Qt::WA_DeleteOnClose);
    pinScrollBars();
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    horizontalScrollBar()->hide();
    verticalScrollBar()->hide();
    setWindowTitle(nameOf(node));
    setObjectName(nameOf(node));
    connect(this, &ProxyView::updateProperty, this, &ProxyView::onUpdateProperties);
    takeMode();
}

ProxyView::~ProxyView() = default;

ProxyScene *ProxyView::setScene(Nodes::ConfigNode *node)
{
    setObjectName(nameOf(node));
    ProxyScene *scene = node ? createScene(node) : nullptr;
    if (!scene) {
        warn(node, "Не удалось создать сцену");
        return nullptr;
    }
    showScene(scene, node);
    return scene;
}

void ProxyView::showScene(ProxyScene *scene, Nodes::ConfigNode *node)
{
    m_relay.disconnect();
    Utils::NodeRelay::Handlers handlers;
    handlers.propertyChanged = [this](Nodes::BasicProperty *p) { emit updateProperty(p); };
    handlers.textChanged = [this, node, name = nameOf(node)]() mutable {
        const QString former = std::exchange(name, nameOf(node));
        if (windowTitle() == former) // a window at run time has a title of its own
            setWindowTitle(name);
        setObjectName(name);
    };
    m_relay.connect(node, std::move(handlers));
    if (const ProxyScene *previous = proxyScene())
        disconnect(previous, &ProxyScene::modeChanged, this, &ProxyView::takeMode);
    QGraphicsView::setScene(scene);
    connect(scene, &ProxyScene::modeChanged, this, &ProxyView::takeMode);
    takeMode();
}

ProxyScene *ProxyView::proxyScene() const
{
    return qobject_cast<ProxyScene *>(scene());
}

const SceneContext &ProxyView::context() const
{
    const ProxyScene *shown = proxyScene();
    return shown ? shown->context() : *SceneContext::process();
}

ProxyScene *ProxyView::createScene(Nodes::ConfigNode *node)
{
    if (auto *composed = dynamic_cast<Nodes::windowComposed *>(node)) {
        if (Nodes::BasicComposition *composition = composed->GetComposition())
            return new ProxyScene(composition, this);
        warn(node, "Не задана композиция");
        return nullptr;
    }
    if (auto *window = dynamic_cast<Nodes::BasicWindow *>(node))
        return new ProxyScene(window, this);
    if (auto *composition = dynamic_cast<Nodes::BasicComposition *>(node))
        return new ProxyScene(composition, this);
    if (auto *layer = dynamic_cast<Nodes::BasicLayer *>(node))
        return new ProxyScene(layer, this);
    return nullptr;
}

void ProxyView::takeMode()
{
    const bool isEditor = context().isEditor();
    setDragMode(isEditor ? RubberBandDrag : NoDrag);
    setViewportUpdateMode(isEditor ? FullViewportUpdate : MinimalViewportUpdate);
    delete m_border; // a kept scene gets a new one each time it is shown
    if (isEditor && scene())
        makeBorder();
}

void ProxyView::makeBorder()
{
    m_border = new Border;
    m_border->setPos(0.5, 0.5);
    m_border->setOutline(true);
    placeBorder();
    scene()->addItem(m_border);
}

void ProxyView::placeBorder()
{
    const QRectF rect = scene() ? scene()->sceneRect() : QRectF(); // a view may show more
    if (m_border)
        m_border->setSize(rect.width() - 1, rect.height() - 1);
}

void ProxyView::onUpdateProperties(Nodes::BasicProperty *)
{
    if (ProxyScene *shown = proxyScene())
        shown->updateGeometry();
    placeBorder();
}

QPixmap ProxyView::getPixmapWidget(Nodes::NodeType type)
{
    return QPixmap(
        QStringLiteral(":/icons/elements/%1.svg").arg(QString::fromStdString(type.ToString())));
}

QSize ProxyView::sizeHint() const
{
    return m_sizeHint;
}

void ProxyView::setSizeHint(QSize size)
{
    m_sizeHint = QSize(size.width() - 2, size.height() - 2);
}

QSize ProxyView::minimumSizeHint() const
{
    return QSize(0, 0);
}

bool ProxyView::canScroll() const
{
    return context().isEditor();
}

// The bars are hidden but keep their range where the view is smaller than the scene. Whatever asks
// for another part of the picture (keys, wheel, focus), an operator could not scroll back.
void ProxyView::pinScrollBars()
{
    for (QScrollBar *bar : {horizontalScrollBar(), verticalScrollBar()}) {
        const auto pin = [this, bar] {
            if (!canScroll())
                bar->setValue(bar->minimum());
        };
        connect(bar, &QScrollBar::valueChanged, this, pin);
        connect(bar, &QScrollBar::rangeChanged, this, pin);
    }
}

void ProxyView::deleteWhenIdle(QObject *object)
{
    if (isIdle())
        object->deleteLater();
    else
        m_dueObjects.append(object);
}

bool ProxyView::event(QEvent *event)
{
    if (event->type() == QEvent::DeferredDelete && !isIdle()) {
        deleteWhenIdle(this);
        return true;
    }
    const EventDepth depth(*this);
    return QGraphicsView::event(event);
}

bool ProxyView::viewportEvent(QEvent *event)
{
    const EventDepth depth(*this);
    return QGraphicsView::viewportEvent(event);
}

} // namespace Widgets
