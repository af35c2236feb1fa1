#include "widgets/charts/marks/EventMarks.h"

#include "widgets/charts/marks/JournalAsker.h"
#include "widgets/charts/marks/MarksItem.h"
#include "widgets/charts/plots/ChartGroupManager.h"
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/charts/widgetChart.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "utils/convert/PlainTip.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>

#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

namespace Widgets {

namespace {

constexpr int askDelay = 400; // ms

void collectAlarms(const Nodes::BasicSignal &signal, std::unordered_set<unsigned long> &sources)
{
    sources.insert(signal.GetId());
    const auto take = [&](const Nodes::ConfigNode *node) {
        const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(node);
        if (alarm && alarm->GetSignal() == &signal)
            sources.insert(alarm->GetId());
    };
    for (const Nodes::NodeLink &child : signal.GetNodes())
        take(dynamic_cast<const Nodes::ConfigNode *>(child.GetNode()));
    if (const Nodes::NodesCollection *project = signal.GetNodesCollection())
        for (const Nodes::ConfigNode *node : project->FindReferrers({signal.GetId()}))
            take(node);
}

bool isEarlier(const Nodes::BasicEvent &left, const Nodes::BasicEvent &right)
{
    return left.time < right.time;
}

void insert(std::vector<Nodes::BasicEvent> &events, Nodes::BasicEvent event)
{
    const auto place = std::upper_bound(events.begin(), events.end(), event, &isEarlier);
    events.insert(place, std::move(event));
    if (events.size() > EventMarks::MaximumEvents)
        events.erase(events.begin());
}

} // namespace

EventMarks::EventMarks(Plot *plot, ChartGroupManager *manager)
    : m_plot(plot),
      m_manager(manager),
      m_item(new MarksItem),
      m_asker(new JournalAsker(this)),
      m_live([this](std::vector<Nodes::BasicEvent> events) { onLive(std::move(events)); },
             MaximumEvents)
{
    m_item->attach(plot);
    m_delay.setSingleShot(true);
    m_delay.setInterval(askDelay);
    connect(&m_delay, &QTimer::timeout, this, &EventMarks::ask);
    connect(m_asker, &JournalAsker::answered, this, &EventMarks::onAnswered);
    connect(plot->axisWidget(QwtAxisId(QwtAxis::xBottom)), &QwtScaleWidget::scaleDivChanged,
            &m_delay, qOverload<>(&QTimer::start));
    if (manager)
        connect(manager, &ChartGroupManager::groupChanged, this, &EventMarks::takeSources);
    plot->canvas()->installEventFilter(this);
    takeSources();
}

EventMarks::~EventMarks()
{
    if (m_plot && m_plot->itemList().contains(m_item))
        delete m_item;
}

void EventMarks::setShown(bool isShown)
{
    m_isShown = isShown;
    m_item->setVisible(isShown);
    takeSources();
}

void EventMarks::takeSources()
{
    m_connection.Disconnect();
    m_sources.clear();
    m_events.clear();
    m_arrived.clear();
    show();
    Nodes::systemCore *model = m_plot && m_plot->isAtWork() ? m_plot->context().model() : nullptr;
    if (!m_isShown || !model || !m_manager)
        return;
    const QList<ISerie *> series = m_plot->series();
    for (const ISerie *serie : series) {
        const Nodes::widgetChartBasicSerie *node = serie->getNode();
        if (!node || node->IsForbidden())
            continue;
        for (const Nodes::BasicSignal *signal : node->GetSignals())
            collectAlarms(*signal, m_sources);
    }
    if (m_sources.empty())
        return;
    // On the journal's thread: the sources are its own copy.
    m_connection = model->GetJournal().ConnectAppended(
        [inlet = m_live.inlet(), sources = m_sources](const Nodes::BasicEvent &event) {
            if (sources.count(event.sourceNode.GetNodeId()) != 0)
                inlet(event);
        });
    m_delay.start();
}

void EventMarks::ask()
{
    Nodes::systemCore *model = m_plot && m_plot->isAtWork() ? m_plot->context().model() : nullptr;
    if (!m_isShown || !model)
        return;
    if (m_sources.empty())
        return takeSources();
    const QwtInterval window = m_plot->window();
    Nodes::JournalQuery query;
    query.begin = Nodes::Timestamp(ChartTime::toUtc(window.minValue())) * 1000;
    query.end = Nodes::Timestamp(ChartTime::toUtc(window.maxValue())) * 1000 + 1;
    query.order = Nodes::JournalQuery::NewestFirst;
    query.limit = MaximumEvents;
    for (const unsigned long id : m_sources)
        if (Nodes::NodesCollection *project = Nodes::NodesCollection::Current())
            query.nodes.push_back(
                model->GetJournal().SourceOf(Nodes::NodeLink(project->FindNode(id))));
    if (query.begin < query.end)
        m_asker->ask(model->GetJournal(), query);
}

void EventMarks::onAnswered(const Nodes::Result &result, std::vector<Nodes::BasicEvent> events)
{
    if (!result) // the journal tells itself what is wrong with it
        return;
    std::reverse(events.begin(), events.end());
    std::stable_sort(events.begin(), events.end(), &isEarlier);
    // What came live while the journal was asked may not have been in it yet.
    for (const Nodes::BasicEvent &arrived : m_arrived) {
        const bool isNewer = events.empty() || events.back().time < arrived.time;
        if (isNewer)
            events.push_back(arrived);
    }
    m_events = std::move(events);
    show();
    emit completed();
}

void EventMarks::onLive(std::vector<Nodes::BasicEvent> events)
{
    for (Nodes::BasicEvent &event : events) {
        insert(m_arrived, event);
        insert(m_events, std::move(event));
    }
    show();
}

void EventMarks::show()
{
    m_item->setEvents(m_events);
    if (m_plot)
        m_plot->scheduleReplot();
}

QString EventMarks::textAt(const QPoint &place) const
{
    if (!m_plot || !m_isShown)
        return {};
    const QRectF canvas = m_plot->canvas()->contentsRect();
    for (const MarkCluster &mark :
         m_item->marks(m_plot->canvasMap(QwtAxisId(QwtAxis::xBottom)), canvas))
        if (MarksItem::rectOf(mark, canvas).adjusted(-2, -4, 2, 4).contains(place))
            return MarkText(mark, m_events);
    return {};
}

bool EventMarks::eventFilter(QObject *watched, QEvent *event)
{
    if (!m_plot || watched != m_plot->canvas())
        return QObject::eventFilter(watched, event);
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QString text = textAt(help->pos());
        QToolTip::showText(help->globalPos(), text.isEmpty() ? text : Utils::PlainTip(text),
                           m_plot->canvas());
        return !text.isEmpty();
    }
    if (event->type() == QEvent::MouseButtonPress) {
        const auto *press = static_cast<QMouseEvent *>(event);
        const QString text = textAt(press->pos());
        if (press->button() == Qt::LeftButton && !text.isEmpty()) {
            QToolTip::showText(press->globalPos(), Utils::PlainTip(text), m_plot->canvas());
            return true; // neither pans nor sets a cursor
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace Widgets
