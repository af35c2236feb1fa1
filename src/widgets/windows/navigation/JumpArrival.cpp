#include "widgets/windows/navigation/JumpArrival.h"

#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/marks/ElementMark.h"
#include "widgets/windows/DesktopContext.h"
#include "widgets/windows/OpenWindows.h"
#include "widgets/windows/desktop/DesktopPlacement.h"
#include "widgets/windows/desktop/Screens.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"

#include <QGraphicsView>

#include <utility>

namespace Widgets {

namespace {

bool isMeant(const ProxyWidget &host, const ShownPlace &place)
{
    const Nodes::BasicWidget *node = host.isVisible() ? host.getNode() : nullptr;
    if (!node)
        return false;
    const unsigned long element = place.element.GetNodeId();
    const Nodes::NodesCollection *project = node->GetNodesCollection();
    const bool isSame =
        node->GetId() == element || (project && project->GetOriginal(node->GetId()) == element);
    return isSame && (place.signal == 0 || ShownPlace::refersTo(*node, place.signal));
}

ProxyWidget *findIn(QWidget *window, const ShownPlace &place)
{
    const auto *view = qobject_cast<ProxyView *>(window);
    const ProxyScene *scene = view && view->isVisible() ? view->proxyScene() : nullptr;
    if (!scene)
        return nullptr;
    for (const ProxyLayer *layer : scene->getLayers()) {
        for (ProxyWidget *host : layer->getWidgets()) {
            if (isMeant(*host, place))
                return host;
        }
    }
    return nullptr;
}

} // namespace

JumpArrival::JumpArrival(ShownPlace place, int display)
    : qBasicAction(nullptr), m_place(std::move(place)), m_display(display)
{
}

void JumpArrival::Execute()
{
    if (ProxyWidget *element = find(m_place, m_display))
        show(*element);
}

ProxyWidget *JumpArrival::find(const ShownPlace &place, int display)
{
    DesktopContext *desktop = DesktopContext::current();
    ProxyWidget *found = nullptr;
    const QVector<WidgetLink> links =
        desktop ? desktop->openWindows().of(place.window, -1) : QVector<WidgetLink>();
    for (const WidgetLink &link : links) {
        ProxyWidget *element = findIn(link.widget, place);
        if (element && (!found || ScreenNumber(link.widget) == display))
            found = element;
    }
    return found;
}

void JumpArrival::show(ProxyWidget &element)
{
    const QList<QGraphicsView *> views = element.scene()->views();
    for (QGraphicsView *view : views) {
        if (view->isVisible())
            DesktopPlacement::present(*view->window());
    }
    ElementMark::put(element);
}

} // namespace Widgets
