#include "widgets/windows/WindowBuilder.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/WindowComposite.h"
#include "widgets/windows/WindowForm.h"
#include "widgets/windows/frames/FrameWindow.h"

#include <QLoggingCategory>

namespace Widgets {

using Nodes::NodeType;

namespace {

Q_LOGGING_CATEGORY(windowLog, "station.windows")

QWidget *makeWindow(Nodes::BasicWindow &node, QWidget *parent)
{
    switch (node.GetNodeType().GetSubtype()) {
    case NodeType::SubtypeWindow:
    case NodeType::SubtypeWindowTemplate:
        return new WindowForm(&node, parent);
    case NodeType::SubtypeWindowComposed:
        return new WindowComposite(&node, parent);
    default:
        qCDebug(windowLog, "Error-window not created!");
        return nullptr;
    }
}

QWidget *makeView(Nodes::ConfigNode &node)
{
    auto *view = new ProxyView(&node, nullptr);
    view->setScene(&node);
    return view;
}

QWidget *makeWidget(Nodes::ConfigNode &node, QWidget *parent)
{
    const NodeType::enNodeType family = node.GetNodeType().GetFamily();
    auto *window = dynamic_cast<Nodes::BasicWindow *>(&node);
    if (family == NodeType::TypeWindow && window)
        return makeWindow(*window, parent);
    if (family == NodeType::TypeComposition || family == NodeType::TypeLayer)
        return makeView(node);
    qCDebug(windowLog, "Error-widget unexpected!\n");
    return nullptr;
}

// Windows stand inside a frame window's content, never beside it.
QWidget *hostOf(QWidget *parent)
{
    const auto *frame = qobject_cast<FrameWindow *>(parent);
    return frame ? frame->widget() : parent;
}

} // namespace

WidgetLink WindowBuilder::open(OpenWindows &windows, Nodes::ConfigNode *node, QWidget *parent)
{
    if (!node)
        return {};
    const OpeningTimer::Clock::time_point begun = OpeningTimer::Clock::now();
    QWidget *widget = makeWidget(*node, hostOf(parent));
    if (!widget)
        return {};
    const WidgetLink link(node->GetId(), widget);
    if (auto *window = qobject_cast<WindowBasic *>(widget)) {
        window->setAttribute(Qt::WA_DeleteOnClose);
        // A closed window may live on for a while under its own dialog: nobody is to find it then.
        QObject::connect(window, &WindowBasic::closed, &windows,
                         [&windows, link] { windows.remove(link); });
        OpeningTimer::startBuilt(*window, begun);
    }
    windows.add(link);
    return link;
}

void WindowBuilder::judgeAccess(const OpenWindows &windows)
{
    for (const WidgetLink &link : windows.links()) {
        const auto *view = qobject_cast<ProxyView *>(link.widget);
        const ProxyScene *scene = view ? view->proxyScene() : nullptr;
        const QList<ProxyLayer *> layers = scene ? scene->getLayers() : QList<ProxyLayer *>();
        for (const ProxyLayer *layer : layers) {
            const QList<ProxyWidget *> hosts = layer->getWidgets();
            for (ProxyWidget *host : hosts)
                host->judgeAccess();
        }
        if (auto *window = qobject_cast<WindowBasic *>(link.widget))
            window->judgeAccess();
    }
}

} // namespace Widgets
