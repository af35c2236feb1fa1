#include "widgets/charts/elements/qwidgetChartBasic.h"

#include "widgets/charts/aids/ChartAids.h"
#include "widgets/charts/axes/ToolBarChart.h"
#include "widgets/charts/elements/ChartCover.h"
#include "widgets/charts/elements/GroupTabs.h"
#include "widgets/charts/elements/LowerParts.h"
#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/PlotHistory.h"
#include "widgets/charts/plots/PlotXAxisRangeDetails.h"
#include "widgets/charts/statistics/CursorPanel.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"

#include "nodes/auth/systemAuthentication.h"
#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/system/systemCore.h"
#include "utils/convert/ValueConversions.h"

#include <QBoxLayout>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <utility>

namespace Widgets {

qwidgetChartBasic::qwidgetChartBasic(Nodes::widgetChart *node, Plot *plot, QWidget *parent,
                                     const SceneContextPtr &context)
    : QFrame(parent),
      IWidget(node, context),
      m_plot(plot),
      m_chart(node),
      m_manager(new ChartGroupManager(node)),
      m_tabs(new GroupTabs(this)),
      m_cover(new ChartCover(this))
{
    m_legend = new Legend(m_manager, this);
    plot->setParent(this);
    plot->setContext(context);
    m_legend->setPlot(plot);
    plot->setGroupManager(m_manager);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setContentsMargins(0, 0, 0, 0);
    setMinimumSize(0, 0);
    setAutoFillBackground(true);
    if (node) {
        m_groupConnection = node->ConnectCurrentGroupChanged(
            [this](int index) { emit currentGroupChanged(index); });
        m_symbolsConnection =
            node->ConnectSymbolsChanged([this](int type) { emit symbolsChanged(type); });
    }
    m_binding.bind(this, node);
    Utils::NodeRelay::Handlers handlers;
    handlers.childAdded = [this](const Nodes::NodeLink &) { onGroupsChanged(); };
    handlers.childRemoved = handlers.childAdded;
    handlers.childMoved = [this] { onGroupsChanged(); };
    m_groups.connect(node, std::move(handlers));
}

// The plot's items are the manager's series: these leave it while it is there, as do those who
// look at what its canvas gets.
qwidgetChartBasic::~qwidgetChartBasic()
{
    delete m_lower;
    delete m_aids;
    delete m_manager;
}

void qwidgetChartBasic::initialize()
{
    connect(m_legend, &Legend::seriesUpdated, m_plot, &Plot::replot);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_plot, 1);
    layout->addWidget(m_legend);
    m_aids = new ChartAids(m_plot, m_manager, m_legend, this);
    layout->addWidget(m_tabs);
    m_lower = new LowerParts(this, m_legend, m_aids->cursorPanel(), m_tabs,
                             m_plot->plotCanvas()->tbChart());
    setCurrentGroup(0);
    connect(m_plot, &Plot::changeVisibleLegend, this, &qwidgetChartBasic::onVisibleLegend);
    connect(m_tabs, &GroupTabs::chosen, this, &qwidgetChartBasic::onTabChosen);
    if (m_chart) {
        setGeometry(Utils::NRectToQRect(m_chart->GetGeometry()));
        (void)takeOver(*m_chart, nullptr);
    }
}

void qwidgetChartBasic::setProxy(QGraphicsProxyWidget *proxy)
{
    m_proxy = proxy;
}

const PropertyBindings &qwidgetChartBasic::bindings() const
{
    using Prop = Nodes::widgetChart::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetChartBasic>(Then::Repaint),
        PropertyRow::takes<&qwidgetChartBasic::takeGroup>(Then::Repaint, Prop::Group),
        PropertyRow::takes<&qwidgetChartBasic::takeLook>(
            Then::Repaint, Prop::Background, Prop::BorderColor, Prop::BorderWidth, Prop::Disabled),
        PropertyRow::takes<&qwidgetChartBasic::takeSymbol>(Then::Repaint, Prop::Symbol,
                                                           Prop::SymbolSize),
        PropertyRow::takes<&qwidgetChartBasic::takeParts>(Then::Repaint, Prop::ToolBar,
                                                          Prop::Legend),
        PropertyRow::takes<&qwidgetChartBasic::takeColumns>(Then::Repaint, Prop::LegendColumns),
        // A chart has many signals: those of its series
        PropertyRow::only(Then::Nothing, Prop::Signal, Prop::Marks),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetChartBasic::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetChart *chart = m_chart.get();
    if (chart && takeOver(*chart, property))
        update();
}

void qwidgetChartBasic::onValueUpdated(Nodes::SignalValue) {}

void qwidgetChartBasic::takeGroup(const Nodes::widgetChart &chart)
{
    setCurrentGroup(chart.currentGroupTab());
}

void qwidgetChartBasic::takeLook(const Nodes::widgetChart &chart)
{
    takeBackground(chart);
    takeBorder(chart);
    QPalette colors = palette();
    colors.setColor(QPalette::Window, m_backgroundColor);
    colors.setColor(QPalette::Base, m_backgroundColor);
    setPalette(colors);
    m_cover->setLook(m_borderWidth, m_borderColor, chart.isDisabled());
}

void qwidgetChartBasic::takeSymbol(const Nodes::widgetChart &chart)
{
    onSetSymbol(chart.GetTypeSymbol());
}

void qwidgetChartBasic::takeParts(const Nodes::widgetChart &chart)
{
    setVisibleToolBar(chart.GetShowToolBar());
    m_plot->plotCanvas()->tbChart()->setLegend(chart.GetShowLegend());
    onVisibleLegend(chart.GetShowLegend());
}

void qwidgetChartBasic::takeColumns(const Nodes::widgetChart &)
{
    const QSignalBlocker blocker(m_legend);
    m_legend->onUpdateProperties();
}

void qwidgetChartBasic::setCurrentGroup(int index)
{
    const Nodes::widgetChart *chart = m_chart.get();
    if (!chart)
        return;
    const Nodes::NodeLinks groups = chart->GetGroups();
    if (index >= 0 && index < int(groups.size())) {
        if (auto *group =
                dynamic_cast<Nodes::widgetChartGroup *>(groups[std::size_t(index)].GetNode())) {
            m_manager->setCurrentGroup(group);
            takeColumns(*chart);
        }
    }
    m_tabs->setGroups(*chart, m_manager->group());
}

// Groups were added, taken away or moved.
void qwidgetChartBasic::onGroupsChanged()
{
    if (!m_chart)
        return;
    if (!m_manager->group())
        setCurrentGroup(0);
    m_tabs->setGroups(*m_chart, m_manager->group());
}

void qwidgetChartBasic::onTabChosen(int index)
{
    if (m_chart && isRuntime())
        m_chart->SetCurrentGroupTab(index);
}

void qwidgetChartBasic::onSetSymbol(int type)
{
    m_plot->onSetSymbol(type);
}

void qwidgetChartBasic::onActive(bool on)
{
    m_plot->onActive(on);
    if (!on) {
        m_userConnection = {};
        disconnect(this, &qwidgetChartBasic::symbolsChanged, this, &qwidgetChartBasic::onSetSymbol);
        disconnect(this, &qwidgetChartBasic::currentGroupChanged, this,
                   &qwidgetChartBasic::setCurrentGroup);
        ElementBinding::setConnected(this, false);
        return;
    }
    connect(this, &qwidgetChartBasic::symbolsChanged, this, &qwidgetChartBasic::onSetSymbol,
            Qt::UniqueConnection);
    connect(this, &qwidgetChartBasic::currentGroupChanged, this,
            &qwidgetChartBasic::setCurrentGroup, Qt::UniqueConnection);
    ElementBinding::setConnected(this, true);
    watchUser();
    const bool isFirst = !std::exchange(m_hasBegun, true);
    if (isFirst && m_plot->isAtWork() && !m_isArchiverMode)
        m_plot->beginTracking(); // afterwards it is the operator's
}

void qwidgetChartBasic::watchUser()
{
    Nodes::systemCore *core = context().model();
    Nodes::systemAuthentication *users = core ? core->GetSystemAuthentication() : nullptr;
    if (!users || !m_plot->isAtWork())
        return;
    m_userConnection = users->ConnectUserChanged([this](const Nodes::NodeLink &) {
        QMetaObject::invokeMethod(m_plot, &Plot::onUserChanged, Qt::QueuedConnection);
    });
}

void qwidgetChartBasic::setArchiverMode(bool on, const PlotXAxisRangeDetails &range)
{
    m_legend->setArchiverMode(on);
    m_isArchiverMode = on;
    auto *plot = qobject_cast<PlotHistory *>(m_plot);
    if (on && plot)
        plot->setXAxisParams(range.from, range.to, range.length, range.unit);
}

void qwidgetChartBasic::setVisibleToolBar(bool isVisible)
{
    m_plot->setVisibleToolBar(isVisible);
}

void qwidgetChartBasic::onVisibleLegend(bool isVisible)
{
    m_lower->setLegendWanted(isVisible);
}

void qwidgetChartBasic::resizeEvent(QResizeEvent *event)
{
    QFrame::resizeEvent(event);
    if (m_isArchiverMode && m_legend->isVisible())
        m_legend->updateGeometry();
}

void qwidgetChartBasic::handCursorOver(const QPoint &position)
{
    const QWidget *child = childAt(position);
    if (isRuntime() && m_proxy && child)
        m_proxy->setCursor(child->cursor());
}

void qwidgetChartBasic::mousePressEvent(QMouseEvent *event)
{
    handCursorOver(event->pos());
    QFrame::mousePressEvent(event);
}

void qwidgetChartBasic::mouseReleaseEvent(QMouseEvent *event)
{
    handCursorOver(event->pos());
    QFrame::mouseReleaseEvent(event);
}

void qwidgetChartBasic::mouseMoveEvent(QMouseEvent *event)
{
    QFrame::mouseMoveEvent(event);
}

bool qwidgetChartBasic::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QFrame::event(event);
}

} // namespace Widgets
