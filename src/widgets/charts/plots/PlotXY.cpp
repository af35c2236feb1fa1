#include "widgets/charts/plots/PlotXY.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/axes/AxisRecord.h"
#include "widgets/charts/axes/ValueScaleDraw.h"
#include "widgets/charts/pickers/PickerCanvasXY.h"
#include "widgets/charts/plots/AxisLength.h"
#include "widgets/charts/plots/HistoryFaults.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/series/qwidgetChartXYSerie.h"
#include "widgets/charts/time/ChartTime.h"

#include "nodes/archive/HistoryAnswer.h"
#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartXY.h"
#include "nodes/charts/widgetChartXYSerie.h"
#include "nodes/model/NodesArray.h"
#include "nodes/model/NodesContainer.h"

#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Widgets {

namespace {

constexpr std::size_t pointBudget = 4000; // of each signal
constexpr int clockTick = 1000;           // ms
constexpr double defaultLength = 10 * 60 * 1000;
constexpr double notArchivedYet = 60000; // ms; at least the longest pause between two commits

} // namespace

PlotXY::PlotXY(Nodes::widgetChartXY *chart, int number, QWidget *parent)
    : Plot(chart, number, parent),
      m_xy(chart),
      m_request(std::make_shared<std::atomic<unsigned>>(0)),
      m_answers([this](std::vector<Answer> answers) { onAnswers(std::move(answers)); })
{
    connect(&m_clock, &QTimer::timeout, this, &PlotXY::onClock);
    m_clock.start(clockTick);
    if (!chart)
        return;
    m_connection =
        chart->ConnectAnswer([inlet = m_answers.inlet(), request = m_request](
                                 const std::shared_ptr<const Nodes::HistoryAnswer> &answer) {
            inlet({*request, answer});
        });
}

PlotXY::~PlotXY()
{
    setFollowing(false);
}

Nodes::widgetChartAxis *PlotXY::lengthAxis() const
{
    const Nodes::widgetChartGroup *shown = group();
    Nodes::widgetChartAxis *told = nullptr;
    for (const Nodes::NodeLink &link : shown ? shown->GetXAxes() : Nodes::NodesContainer()) {
        auto *axis = dynamic_cast<Nodes::widgetChartAxis *>(link.GetNode());
        if (axis && (!told || (AxisPlaces::isTime(*axis) && !AxisPlaces::isTime(*told))))
            told = axis;
    }
    return told;
}

double PlotXY::length() const
{
    const Nodes::widgetChartAxis *told = lengthAxis();
    const double length =
        told ? Nodes::widgetChartAxis::Milliseconds(told->GetRangeLength(), told->GetRangeUnit())
             : defaultLength;
    return length > 0 ? length : defaultLength;
}

QString PlotXY::lengthText() const
{
    struct Unit
    {
        double length;
        const char *name;
    };
    constexpr Unit units[] = {{86400000, "сут"}, {3600000, "ч"}, {60000, "мин"}, {1000, "с"}};
    const double told = length();
    const auto *whole =
        std::find_if(std::begin(units), std::end(units) - 1, [told](const Unit &unit) {
            return told >= unit.length && std::fmod(told, unit.length) == 0;
        });
    return QString::number(told / whole->length) + QChar(QChar::Nbsp) +
           QString::fromUtf8(whole->name);
}

void PlotXY::onActionLengthX()
{
    const QPointer<PlotXY> alive(this);
    Nodes::widgetChartAxis *axis = lengthAxis();
    const auto chosen = axis ? AxisLength::ask(*axis) : std::nullopt;
    if (!chosen || !alive || !lengthAxis())
        return;
    lengthAxis()->SetRangeLength(chosen->count);
    lengthAxis()->SetRangeUnit(chosen->unit);
    onUpdateProperties();
    for (qwidgetChartXYSerie *serie : xySeries())
        serie->trimLeft(ChartTime::now() - notArchivedYet);
    askCurrent();
}

// Behind the title of the X axis: nothing else tells which past the points are of.
void PlotXY::showLength()
{
    const QwtAxisId xAxis(QwtAxis::xBottom);
    QwtText title = axisWidget(xAxis)->title();
    const QString told = QStringLiteral("за ") + lengthText();
    title.setText(title.isEmpty() ? told : title.text() + QStringLiteral(" (%1)").arg(told),
                  QwtText::PlainText);
    setAxisTitle(xAxis, title);
}

QList<qwidgetChartXYSerie *> PlotXY::xySeries() const
{
    QList<qwidgetChartXYSerie *> found;
    for (ISerie *serie : series()) {
        if (auto *xy = dynamic_cast<qwidgetChartXYSerie *>(serie))
            found << xy;
    }
    return found;
}

// A group without an X axis of values still has one to stand on.
void PlotXY::setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes)
{
    Plot::setAxes(yAxes, xAxes);
    showLength();
    const QwtAxisId xAxis(QwtAxis::xBottom);
    const auto isTimeAxis = [&xAxis](const auto &record) {
        return record->axis() == xAxis && record->isTime();
    };
    if (std::none_of(axisRecords().begin(), axisRecords().end(), isTimeAxis))
        return;
    setAxisScaleEngine(xAxis, new QwtLinearScaleEngine);
    setAxisScaleDraw(xAxis, new ValueScaleDraw(palette().color(QPalette::Text), std::string()));
    setAxisAutoScale(xAxis, true);
    emit axisScaleDrawChanged(xAxis, axisScaleDraw(xAxis));
}

void PlotXY::onUpdateProperties()
{
    Plot::onUpdateProperties();
    if (isAtWork())
        return;
    for (qwidgetChartXYSerie *serie : xySeries())
        serie->sketch(axisInterval(serie->xAxis()), axisInterval(serie->yAxis()));
    replot();
}

void PlotXY::updateGroup()
{
    deletePanner();
    Plot::updateGroup();
    bool hasNoArchive = false;
    for (qwidgetChartXYSerie *serie : xySeries()) {
        connect(serie, &ISerie::informationChaged, this, &Plot::scheduleReplot,
                Qt::UniqueConnection);
        const auto *node = dynamic_cast<Nodes::widgetChartXYSerie *>(serie->getNode());
        hasNoArchive = hasNoArchive || !serie->hasArchiverSource() || !node || !node->GetSourceX();
    }
    setNoArchive(hasNoArchive);
    setFollowing(true);
    createPanner();
    askCurrent();
}

void PlotXY::forgetSeries()
{
    setFollowing(false);
    Plot::forgetSeries();
}

void PlotXY::setFollowing(bool on)
{
    for (qwidgetChartXYSerie *serie : xySeries())
        serie->setFollowing(on && isAtWork());
}

// Who may not see one of the signals sees none of their points.
void PlotXY::onUserChanged()
{
    Plot::onUserChanged();
    HandleConnections(true);
    for (qwidgetChartXYSerie *serie : xySeries())
        serie->clearPoints();
    setFollowing(true);
    askCurrent();
}

void PlotXY::askCurrent()
{
    const Nodes::Result asked = getHistory();
    if (!asked)
        setNote(HistoryFaults::text(asked));
}

Nodes::Result PlotXY::getHistory()
{
    if (hasNoArchive() || !isAtWork())
        return {};
    if (!m_xy)
        return Nodes::Result(Nodes::Result::NotFound, "the chart has been deleted");
    Nodes::NodesArray nodes;
    for (const qwidgetChartXYSerie *serie : xySeries()) {
        if (const Nodes::widgetChartBasicSerie *node = serie->getNode())
            nodes.push_back(node->GetNodeLink());
    }
    m_xy->SetPointBudget(pointBudget);
    ++*m_request; // before the call: the answer may come while it runs
    return m_xy->GetHistory(ChartTime::toUtc(ChartTime::now() - length()), 0, nodes);
}

void PlotXY::onAnswers(std::vector<Answer> answers)
{
    for (const auto &[request, answer] : answers) {
        if (request != *m_request)
            continue;
        const auto samples = Nodes::SignalHistoryResponse::AllOf(*answer);
        for (qwidgetChartXYSerie *serie : xySeries())
            serie->updateHistory(samples);
        setNote(HistoryFaults::text(*answer));
    }
    onClock();
    scheduleReplot();
}

void PlotXY::onClock()
{
    const double oldest = ChartTime::now() - length();
    for (qwidgetChartXYSerie *serie : xySeries())
        serie->trimLeft(oldest);
}

IPickerCanvas *PlotXY::makePicker()
{
    return new PickerCanvasXY(this);
}

} // namespace Widgets
