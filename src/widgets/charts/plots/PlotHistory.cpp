#include "widgets/charts/plots/PlotHistory.h"

#include "widgets/charts/overlay/ShiftText.h"
#include "widgets/charts/plots/HeldCurves.h"
#include "widgets/charts/plots/HistoryFaults.h"
#include "widgets/charts/plots/LiveFeed.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/plots/WaitBox.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/model/NodesArray.h"
#include "nodes/values/IntervalSample.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace Widgets {

namespace {

const QwtAxisId timeAxis(QwtAxis::xBottom);

constexpr int pointsPerColumn = 2; // each may be an aggregate with two extremes of its own
constexpr int leastColumns = 200;
constexpr int clockTick = 1000; // ms
constexpr double coarse = 2;    // times the window

/// Not that of the window: others ask the archive for it.
bool showsOtherTime(const ISerie &serie)
{
    return ShiftOf(serie.getNode()) > 0;
}

/// The last moment that it tells of.
double endOf(const Nodes::SignalHistoryResponse &sample)
{
    const Nodes::IntervalSample *interval = sample.getIntervalSample();
    return interval ? ChartTime::toX(interval->end - 1) : ChartTime::fromUtc(sample.GetTime());
}

unsigned long long truncated(double x)
{
    return ChartTime::toUnsigned(std::trunc(x));
}

} // namespace

PlotHistory::PlotHistory(Nodes::widgetChartHistory *chart, int number, QWidget *parent)
    : Plot(chart, number, parent),
      m_history(chart),
      m_request(std::make_shared<std::atomic<unsigned>>(0))
{
    qRegisterMetaType<std::vector<Nodes::SignalHistoryResponse>>(
        "std::vector<Nodes::SignalHistoryResponse>");
    connect(this, &PlotHistory::getHistoryCompleted, this, &PlotHistory::onGetHistoryCompleted);
    m_scheduled.setSingleShot(true);
    connect(&m_scheduled, &QTimer::timeout, this, &PlotHistory::onScheduled);
    connect(waitBox(), &QDialog::rejected, this, &PlotHistory::giveUp);
    connect(&m_clock, &QTimer::timeout, this, &PlotHistory::onClock);
    m_clock.start(clockTick);
    m_answers = std::make_unique<Utils::QueueRelay<Answer>>(
        [this](std::vector<Answer> answers) { onAnswers(std::move(answers)); });
    if (!chart)
        return;
    m_connection =
        chart->ConnectAnswer([inlet = m_answers->inlet(), request = m_request](
                                 const std::shared_ptr<const Nodes::HistoryAnswer> &answer) {
            inlet({*request, answer, Nodes::SignalHistoryResponse::AllOf(*answer)});
        });
}

PlotHistory::~PlotHistory() = default;

Nodes::Result PlotHistory::getHistory(unsigned long long from, unsigned long long to)
{
    if (hasNoArchive() || !isAtWork())
        return {};
    if (!m_history)
        return Nodes::Result(Nodes::Result::NotFound, "the chart has been deleted");
    if (to != 0 && from > to)
        return Nodes::Result(m_history.get(), Nodes::Result::InvalidArgument,
                             "the span ends before it begins");
    const Nodes::Result accepted = ask(from, to);
    if (!accepted) {
        m_held.reset();
        m_isEmptied = false;
        setNote(series().isEmpty() ? QStringLiteral("На графике нет рядов.")
                                   : HistoryFaults::text(accepted));
        scheduleReplot();
        if (waitBox()->isRunning())
            closeWaitBox();
    } else if (waitBox() && isVisible()) {
        waitForAnswer(); // the plot may be gone by now
    }
    return accepted;
}

// The picture of the curves stays while they are empty.
Nodes::Result PlotHistory::ask(unsigned long long from, unsigned long long to)
{
    if (!m_isEmptied)
        m_held = std::make_unique<HeldCurves>(*this, serieItems());
    m_isEmptied = true;
    m_isOwed = true;
    m_askedWidth = (to == 0 ? ChartTime::now() : double(to)) - double(from);
    removeAllSeriesData();
    forgetLeftOut();
    feed().markRequest();
    Nodes::NodesArray nodes;
    const QList<ISerie *> all = series();
    for (ISerie *serie : all) {
        if (Nodes::widgetChartBasicSerie *node = serie->getNode())
            nodes.push_back(node->GetNodeLink());
    }
    const int columns = qMax(leastColumns, plotCanvas()->width());
    m_history->SetPointBudget(std::size_t(columns * pointsPerColumn));
    m_history->CancelHistory(); // so that no older answer takes the number of this request
    ++*m_request;
    return m_history->GetHistory(ChartTime::toUtc(double(from)),
                                 to == 0 ? 0 : ChartTime::toUtc(double(to)), nodes);
}

// One loop waits for the newest request, whichever began it.
void PlotHistory::waitForAnswer()
{
    if (waitBox()->isRunning())
        return;
    setWaiting(true);
    (void)waitBox()->exec();
}

// At once, not when the loop ends: below another one's it ends late, when more may have been asked.
void PlotHistory::giveUp()
{
    if (!waitBox()->isRunning())
        return;
    setWaiting(false);
    ++*m_request;
    m_held.reset();
    m_isEmptied = false;
    if (m_history)
        m_history->CancelHistory();
    const QList<ISerie *> all = series();
    for (ISerie *serie : all)
        addKept(*serie, -std::numeric_limits<double>::infinity(), false);
    setNote(waitBox()->isTimeUp() ? QStringLiteral("Архив не ответил. Показаны текущие значения.")
                                  : QStringLiteral("Запрос архива прерван. Показаны текущие "
                                                   "значения."));
    scheduleReplot();
}

Nodes::Result PlotHistory::getCurrentHistory()
{
    const QwtInterval window = this->window();
    const double margin = Margin * window.width();
    return getHistory(truncated(window.minValue() - margin), truncated(window.maxValue() + margin));
}

void PlotHistory::removeAllSeriesData()
{
    const QList<ISerie *> all = series();
    for (ISerie *serie : all) {
        if (!showsOtherTime(*serie))
            serie->clearPoints();
    }
}

void PlotHistory::forgetSeries()
{
    m_held.reset();
    m_isEmptied = false;
    Plot::forgetSeries();
}

void PlotHistory::onAnswers(std::vector<Answer> answers)
{
    const QPointer<PlotHistory> alive(this);
    for (Answer &answer : answers) {
        if (!alive || answer.request != *m_request)
            continue;
        setNote(HistoryFaults::text(*answer.whole));
        emit getHistoryCompleted(std::move(answer.samples));
    }
}

void PlotHistory::onGetHistoryCompleted(std::vector<Nodes::SignalHistoryResponse> answer)
{
    std::optional<double> newest;
    const QList<ISerie *> all = series();
    for (ISerie *serie : all) {
        if (showsOtherTime(*serie))
            continue;
        serie->updateArchPoints(answer);
        addMissing(*serie, answer);
        const QPointF last = serie->lastPoint();
        serie->updateLabel(last);
        newest = newest ? qMax(*newest, last.x()) : last.x();
    }
    m_isAggregated = std::any_of(answer.begin(), answer.end(), [](const auto &sample) {
        return sample.getIntervalSample() != nullptr;
    });
    m_isEmptied = false;
    m_isOwed = false;
    m_held.reset();
    if (newest)
        follow(*newest);
    m_clock.start(); // what was answered is seen before the clock moves on
    // Asked from far back to the present, it is too coarse for what the window shows now.
    if (m_isAggregated && m_askedWidth > coarse * window().width())
        schedule({});
    scheduleReplot();
    closeWaitBox();
    replot(); // who waited does not wait for the timer, too
}

// What was published before the curves were emptied, and is not in the archive yet.
void PlotHistory::addMissing(ISerie &serie, const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    const auto *source = serie.getArchiverSource();
    const Nodes::BasicNode *signal = source ? source->GetSource() : nullptr;
    if (!signal)
        return;
    double archived = -std::numeric_limits<double>::infinity();
    for (const Nodes::SignalHistoryResponse &sample : answer) {
        if (sample.GetNodeId() == signal->GetId())
            archived = qMax(archived, endOf(sample));
    }
    addKept(serie, archived, serie.isReplacedByAnswers());
}

void PlotHistory::addKept(ISerie &serie, double archived, bool isReplaced)
{
    const QwtInterval window = this->window();
    const double margin = Margin * window.width();
    for (const LiveFeed::Point &point : feed().missing(&serie, archived, isReplaced)) {
        if (point.x >= window.minValue() - margin &&
            (tracking() || point.x <= window.maxValue() + margin))
            serie.appendPoint(point.x, point.value);
    }
}

void PlotHistory::onActive(bool on)
{
    if (!on && waitBox()->isRunning())
        waitBox()->reject();
    else if (on && m_isOwed)
        schedule({});
}

void PlotHistory::onUserChanged()
{
    Plot::onUserChanged();
    if (isAtWork())
        schedule({});
}

void PlotHistory::onValuesLost()
{
    schedule({});
}

void PlotHistory::schedule(std::optional<Span> span)
{
    m_span = span;
    m_scheduled.start(0);
}

void PlotHistory::onScheduled()
{
    const std::optional<Span> span = m_span;
    if (span) {
        (void)getHistory(span->first, span->second);
        return;
    }
    follow(ChartTime::now()); // else it ends where nobody looked any more
    (void)getCurrentHistory();
}

void PlotHistory::setAnswerLimit(int milliseconds)
{
    waitBox()->setTimeLimit(milliseconds);
}

} // namespace Widgets
