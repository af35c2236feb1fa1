#include "widgets/charts/axes/ToolBarChart.h"

#include "nodes/charts/widgetChart.h"

#include <QAction>

namespace Widgets {

ToolBarChart::ToolBarChart(Nodes::widgetChart *chart, QWidget *parent) : ToolBar(chart, parent)
{
    m_trend =
        addKey(tr("Тренд"), QStringLiteral(":/icons/trend-20.png"), tr("Тренд: сдвигать кривые"));
    m_trend->setCheckable(true);
    m_trend->setChecked(true);
    m_legend = addKey(tr("Легенда"), QStringLiteral(":/icons/legend-20.png"),
                      tr("Легенда: показать или скрыть"));
    m_legend->setCheckable(true);
    m_legend->setChecked(!chart || chart->GetShowLegend());
    m_visir =
        addKey(tr("Визир"), QStringLiteral(":/icons/visir-20.png"), tr("Визир: прочесть значения"));
    m_visir->setCheckable(true);
    connect(m_trend, &QAction::triggered, this, &ToolBarChart::onTrend);
    connect(m_legend, &QAction::toggled, this, &ToolBarChart::changeVisibleLegend);
    connect(m_visir, &QAction::triggered, this, &ToolBarChart::setVisir);
    fit();
}

bool ToolBarChart::isVisir() const
{
    return m_visir->isChecked();
}

void ToolBarChart::setVisir(bool on)
{
    m_visir->setChecked(on);
    m_trend->setChecked(!on);
    emit changeVizir(on);
}

void ToolBarChart::setLegend(bool on)
{
    m_legend->setChecked(on);
}

void ToolBarChart::onTrend()
{
    setVisir(false);
}

} // namespace Widgets
