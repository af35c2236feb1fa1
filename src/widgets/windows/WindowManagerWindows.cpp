#include "widgets/windows/WindowManager.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/OpeningTimer.h"
#include "widgets/windows/TemplateInstances.h"
#include "widgets/windows/WindowComposite.h"
#include "widgets/windows/WindowForm.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/Screens.h"
#include "widgets/windows/frames/FrameDisplays.h"
#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"
#include "nodes/visual/windows/BasicFrame.h"

#include <QApplication>
#include <QLoggingCategory>

#include <algorithm>

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

void WindowManager::Start()
{
    Nodes::NodeLinks nodes;
    if (m_core && m_core->GetNodesCollection())
        m_core->GetNodesCollection()->FindNodes(NodeType::TypeFrame, &nodes);
    for (const Nodes::NodeLink &link : nodes) {
        const auto *node = dynamic_cast<Nodes::BasicFrame *>(link.GetNode());
        QWidget *frame = node && node->IsLocal() ? createFrame(link.GetNode()) : nullptr;
        if (!frame)
            continue;
        m_currentFrame = frame;
        m_frames->add(frame);
    }
    m_frames->show();
}

QList<QWidget *> WindowManager::createFrameWindows(const Nodes::BasicFrame &node)
{
    QList<QWidget *> windows;
    for (const Nodes::NodeLink &link : node.GetWindows()) {
        if (QWidget *window = createWindow(link.GetNode()).widget)
            windows.append(window);
    }
    return windows;
}

QWidget *WindowManager::createFrame(Nodes::ConfigNode *node)
{
    auto *frame = dynamic_cast<Nodes::BasicFrame *>(node);
    if (!frame || node->GetNodeType().GetFamily() != NodeType::TypeFrame)
        return nullptr;
    auto *widget = new FrameWidget(nullptr);
    widget->setWindowTitle(QString::fromStdString(frame->GetName()));
    widget->setNode(frame);
    widget->setWindows(createFrameWindows(*frame));
    if (frame->GetBorderType() != Nodes::BasicFrame::BorderDecorated) {
        widget->setWindowFlags(Qt::FramelessWindowHint);
        return widget;
    }
    auto *decorated = new FrameWindow(nullptr);
    decorated->setResizeableFrame(false);
    const QPoint place = widget->pos();
    decorated->setWidget(widget);
    decorated->move(place);
    return decorated;
}

WidgetLink WindowManager::createWindow(Nodes::ConfigNode *node)
{
    return createWindow(node, m_currentFrame);
}

WidgetLink WindowManager::createWindow(Nodes::ConfigNode *node, QWidget *parent)
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
        connect(window, &WindowBasic::closed, this, [this, link] { m_windows.removeOne(link); });
        OpeningTimer::startBuilt(*window, begun);
    }
    m_windows.append(link);
    connect(widget, &QObject::destroyed, this, [this, link] { m_windows.removeOne(link); });
    return link;
}

QWidget *WindowManager::GetWindow(unsigned long id) const
{
    const auto found = std::find_if(m_windows.cbegin(), m_windows.cend(),
                                    [id](const WidgetLink &link) { return link.id == id; });
    return found == m_windows.cend() ? nullptr : found->widget;
}

QWidget *WindowManager::GetWindow(unsigned long id, int screen) const
{
    return getWindows(id, screen).value(0, nullptr);
}

QVector<QWidget *> WindowManager::getWindows(unsigned long id, int screen) const
{
    QVector<QWidget *> found;
    for (const WidgetLink &link : m_windows) {
        if (link.id == id && ScreenNumber(link.widget) == screen)
            found.append(link.widget);
    }
    return found;
}

QWidget *WindowManager::getFrame(int screen) const
{
    return m_frames->frameOn(screen);
}

FrameMapping WindowManager::mappingOn(int screen) const
{
    return m_frames->mappingOn(screen);
}

bool WindowManager::closeWindow(unsigned long id, QWidget *widget)
{
    const WidgetLink link(id, widget);
    if (!m_windows.contains(link))
        return false;
    QWidget *outer = DesktopPlacement::outermost(widget);
    if (outer && !outer->close())
        return false;
    m_windows.removeOne(link);
    return true;
}

QVector<WidgetLink> WindowManager::windowsOf(unsigned long id, int display) const
{
    const QWidget *active = QApplication::activeWindow();
    if (display == 0 && !active)
        return {};
    if (display == 0)
        display = ScreenNumber(active) + 1;
    QVector<WidgetLink> found;
    for (const WidgetLink &link : m_windows) {
        const bool isMeant = link.id == id || TemplateInstances::isMadeFrom(*this, link.widget, id);
        if (isMeant && (display < 0 || ScreenNumber(link.widget) + 1 == display))
            found.append(link);
    }
    return found;
}

void WindowManager::closeAllWindow(unsigned long id, int display)
{
    const QVector<WidgetLink> links = windowsOf(id, display);
    for (const WidgetLink &link : links)
        closeWindow(link.id, link.widget); // unless an earlier one took it along
}

void WindowManager::judgeAccess()
{
    for (const WidgetLink &link : qAsConst(m_windows)) {
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

void WindowManager::closeEverything()
{
    QVector<QPointer<QWidget>> outermost;
    for (const WidgetLink &link : qAsConst(m_windows))
        outermost.append(DesktopPlacement::outermost(link.widget));
    outermost += m_frames->frames();
    for (const QPointer<QWidget> &widget : qAsConst(outermost))
        delete widget;
}

} // namespace Widgets
