#include "widgets/charts/axes/ToolBarAutoScale.h"

#include "nodes/charts/widgetChartAxis.h"

#include <QAction>
#include <QSignalBlocker>

#include <algorithm>

namespace Widgets {

ToolBarAutoScale::ToolBarAutoScale(Nodes::widgetChart *chart, const QString &icon,
                                   const QString &tip, QWidget *parent)
    : ToolBar(chart, parent), m_autoScale(addKey(tr("Автомасштаб"), icon, tip))
{
    m_autoScale->setCheckable(true);
    connect(m_autoScale, &QAction::toggled, this, &ToolBarAutoScale::autoScaleChanged);
    fit();
}

bool ToolBarAutoScale::isAutoScale() const
{
    return m_autoScale->isChecked();
}

void ToolBarAutoScale::setAutoScale(bool on)
{
    m_autoScale->setChecked(on);
}

void ToolBarAutoScale::updateAutoScale()
{
    const auto governed = axes();
    const QSignalBlocker quiet(this);
    m_autoScale->setChecked(!governed.empty() &&
                            std::all_of(governed.begin(), governed.end(),
                                        [](const auto *axis) { return axis->IsAutoScale(); }));
}

void ToolBarAutoScale::onUpdateProperties()
{
    updateAutoScale();
    ToolBar::onUpdateProperties();
}

} // namespace Widgets
