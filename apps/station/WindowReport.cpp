#include "apps/station/WindowReport.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/windows/WindowComposite.h"

#include <QJsonArray>
#include <QTableView>

#include <algorithm>

namespace Station {

namespace {

using Nodes::Quality;
using Widgets::ShowsValue;

constexpr int listedRows = 20;

/// Calls `visit(node, element)` for each element of the window that shows a signal.
template <class Visit> void forEachValue(const Widgets::WidgetLink &link, Visit visit)
{
    const auto *view = qobject_cast<const Widgets::ProxyView *>(link.widget);
    const Widgets::ProxyScene *scene = view ? view->proxyScene() : nullptr;
    if (!scene)
        return;
    for (const Widgets::ProxyLayer *layer : scene->getLayers()) {
        for (const Widgets::ProxyWidget *host : layer->getWidgets()) {
            const Nodes::BasicWidget *node = host->getNode();
            if (!node || node->GetSignalLink().isEmpty())
                continue;
            if (const auto *element = dynamic_cast<const ShowsValue *>(host->element()))
                visit(*node, *element);
        }
    }
}

QJsonObject describe(const Nodes::BasicWidget &node, const ShowsValue &element)
{
    return {{"id", double(node.GetId())},
            {"name", QString::fromStdString(node.GetName())},
            {"signal", QString::fromStdString(node.GetSignalLink().GetLinkName(true))},
            {"text", element.shownText()},
            {"quality", Nodes::QualityToken(element.shownQuality())}};
}

// What a list begins with is enough to see whether it lives.
QJsonArray listsIn(const QWidget &widget)
{
    QJsonArray lists;
    const auto *view = qobject_cast<const Widgets::ProxyView *>(&widget);
    const Widgets::ProxyScene *scene = view ? view->proxyScene() : nullptr;
    for (const Widgets::ProxyLayer *layer :
         scene ? scene->getLayers() : QList<Widgets::ProxyLayer *>()) {
        for (const Widgets::ProxyWidget *host : layer->getWidgets()) {
            const auto *table =
                host->widget() ? host->widget()->findChild<QTableView *>() : nullptr;
            const QAbstractItemModel *rows = table ? table->model() : nullptr;
            if (!rows)
                continue;
            QJsonArray first;
            for (int row = 0; row < std::min(rows->rowCount(), listedRows); ++row) {
                QStringList cells;
                for (int column = 0; column < rows->columnCount(); ++column)
                    cells << rows->index(row, column).data().toString();
                first.append(cells.join(QStringLiteral(" | ")));
            }
            lists.append(QJsonObject{{"id", double(host->getNodeLink().GetNodeId())},
                                     {"rows", rows->rowCount()},
                                     {"first", first}});
        }
    }
    return lists;
}

QString contentOf(const QWidget &widget)
{
    const auto *composite = qobject_cast<const Widgets::WindowComposite *>(&widget);
    const Nodes::BasicComposition *shown = composite ? composite->composition() : nullptr;
    return shown ? QString::fromStdString(shown->GetName()) : QString();
}

} // namespace

WindowReport::WindowReport(const Widgets::WidgetLink &link) : m_link(link)
{
    forEachValue(m_link, [this](const Nodes::BasicWidget &, const ShowsValue &element) {
        ++m_bound;
        ++m_shown[std::size_t(element.shownQuality())];
    });
}

bool WindowReport::operator==(const WindowReport &other) const
{
    return m_link == other.m_link && m_bound == other.m_bound && m_shown == other.m_shown;
}

QJsonObject WindowReport::toJson(bool withTexts) const
{
    const QWidget &widget = *m_link.widget;
    const QPoint place = widget.mapToGlobal(QPoint(0, 0));
    QJsonObject window{{"id", double(m_link.id)},
                       {"name", widget.windowTitle()},
                       {"visible", widget.isVisible()},
                       {"x", place.x()},
                       {"y", place.y()},
                       {"width", widget.width()},
                       {"height", widget.height()},
                       {"bound", m_bound}};
    for (const Quality quality : {Quality::Good, Quality::Uncertain, Quality::Stale, Quality::Bad})
        window[Nodes::QualityToken(quality)] = m_shown[std::size_t(quality)];
    if (const auto *runtimeWindow = qobject_cast<const Widgets::WindowBasic *>(&widget)) {
        window["scaleX"] = runtimeWindow->mapping().scaleX();
        window["scaleY"] = runtimeWindow->mapping().scaleY();
    }
    const QString content = contentOf(widget);
    if (!content.isEmpty())
        window["composition"] = content;
    if (!withTexts)
        return window;
    QJsonArray texts;
    forEachValue(m_link, [&](const Nodes::BasicWidget &node, const ShowsValue &element) {
        texts.append(describe(node, element));
    });
    window["texts"] = texts;
    const QJsonArray lists = listsIn(widget);
    if (!lists.isEmpty())
        window["lists"] = lists;
    return window;
}

} // namespace Station
