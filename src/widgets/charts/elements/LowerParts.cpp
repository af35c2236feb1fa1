#include "widgets/charts/elements/LowerParts.h"

#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/statistics/CursorPanel.h"

#include <QEvent>
#include <QHeaderView>
#include <QSignalBlocker>

namespace Widgets {

LowerParts::LowerParts(QWidget *element, Legend *legend, CursorPanel *panel, QWidget *tabs,
                       ToolBarChart *keys)
    : QObject(element),
      m_element(element),
      m_legend(legend),
      m_panel(panel),
      m_tabs(tabs),
      m_keys(keys)
{
    for (QWidget *watched : {element, tabs})
        watched->installEventFilter(this);
    connect(panel, &CursorPanel::shown, this, &LowerParts::onPanelShown);
    fit();
}

void LowerParts::setLegendWanted(bool isWanted)
{
    m_isLegendWanted = isWanted;
    if (isWanted)
        m_panel->hide();
    m_legend->setVisible(isWanted);
}

void LowerParts::onPanelShown(bool isShown)
{
    const bool isLegend = m_isLegendWanted && !isShown;
    m_legend->setVisible(isLegend);
    const QSignalBlocker blocker(m_keys);
    m_keys->setLegend(isLegend);
}

// Less than a row tells nothing: that room is the plot's as well.
void LowerParts::fit()
{
    const int tabs = m_tabs->isHidden() ? 0 : m_tabs->sizeHint().height();
    const int room = int(m_element->height() * (1 - PlotShare)) - tabs;
    const int leastLegend = m_legend->horizontalHeader()->sizeHint().height() +
                            m_legend->verticalHeader()->defaultSectionSize();
    m_legend->setMaximumHeight(room < leastLegend ? 0 : room);
    m_panel->setMaximumHeight(room < m_panel->minimumSizeHint().height() ? 0 : room);
}

bool LowerParts::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::ShowToParent ||
        event->type() == QEvent::HideToParent)
        fit();
    return QObject::eventFilter(watched, event);
}

} // namespace Widgets
