#include "widgets/charts/axes/ToolBar.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/model/NodesContainer.h"

#include <QAction>
#include <QEvent>
#include <QIcon>

namespace Widgets {

namespace {

constexpr QSize iconPixels(20, 20);

// What is latched differs by a thick dark frame, not by a shade alone.
constexpr const char *keyStyle =
    "QToolBar { background: rgba(244, 246, 247, 235); border: 1px solid #8a949b;"
    " border-radius: 4px; padding: 1px; spacing: 2px; }"
    "QToolButton { background: transparent; color: #20262c; border: 2px solid transparent;"
    " border-radius: 3px; min-width: 34px; min-height: 34px; padding: 0 2px;"
    " font-size: 15px; font-weight: 600; }"
    "QToolButton:hover { border-color: #a9b0b6; }"
    "QToolButton:pressed { background: #b4bdc4; }"
    "QToolButton:checked { background: #cfd6db; border-color: #37424b; }"
    "QToolButton:disabled { color: #59636b; }"
    "QToolBarExtension { min-width: 0; min-height: 0; }";

} // namespace

ToolBar::ToolBar(Nodes::widgetChart *chart, QWidget *parent)
    : QToolBar(parent), m_chart(chart ? chart->GetNodeLink() : Nodes::NodeLink())
{
    setMovable(false);
    setFloatable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setIconSize(iconPixels);
    setToolButtonStyle(Qt::ToolButtonIconOnly); // one without an icon shows its text
    setCursor(Qt::ArrowCursor);
    setAutoFillBackground(false);
    setStyleSheet(QLatin1String(keyStyle));
}

Nodes::widgetChart *ToolBar::chart() const
{
    return dynamic_cast<Nodes::widgetChart *>(m_chart.GetNode());
}

Nodes::widgetChartGroup *ToolBar::group() const
{
    return dynamic_cast<Nodes::widgetChartGroup *>(m_group.GetNode());
}

void ToolBar::setCurrentGroup(Nodes::widgetChartGroup *group)
{
    m_group = group ? group->GetNodeLink() : Nodes::NodeLink();
    onUpdateProperties();
}

void ToolBar::onUpdateProperties()
{
    fit();
}

std::vector<Nodes::widgetChartAxis *> ToolBar::groupAxes(bool areX) const
{
    std::vector<Nodes::widgetChartAxis *> axes;
    const Nodes::widgetChartGroup *shown = group();
    if (!shown)
        return axes;
    for (const Nodes::NodeLink &link : areX ? shown->GetXAxes() : shown->GetYAxes()) {
        if (auto *axis = dynamic_cast<Nodes::widgetChartAxis *>(link.GetNode()))
            axes.push_back(axis);
    }
    return axes;
}

QAction *ToolBar::addKey(const QString &text, const QString &icon, const QString &tip)
{
    QAction *key = icon.isEmpty() ? addAction(text) : addAction(QIcon(icon), text);
    key->setToolTip(tip);
    return key;
}

void ToolBar::fit()
{
    adjustSize();
}

void ToolBar::changeEvent(QEvent *event)
{
    QToolBar::changeEvent(event);
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::FontChange)
        fit();
}

} // namespace Widgets
