#include "widgets/charts/series/qwidgetChartDiscretSerie.h"

#include "widgets/charts/axes/DiscretStack.h"
#include "widgets/charts/series/DiscretBands.h"
#include "widgets/charts/series/SerieColumn.h"
#include "widgets/charts/series/SeriePlotFlag.h"

#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/charts/widgetChartGroup.h"

#include <cmath>

namespace Widgets {

namespace {

constexpr double behindZ = 1.0;
constexpr double aboveZ = 10.0; // of lines, also of one in front: none strikes through words

} // namespace

qwidgetChartDiscretSerie::qwidgetChartDiscretSerie(Nodes::widgetChartDiscretSerie *node,
                                                   QObject *parent)
    : qwidgetChartBasicSerie(node, parent),
      m_fill(std::make_unique<DiscretFill>(*this)),
      m_baseLine(std::make_unique<DiscretBaseLine>(*this)),
      m_caption(std::make_unique<DiscretCaption>(*this))
{
    onUpdateProperties();
}

qwidgetChartDiscretSerie::~qwidgetChartDiscretSerie() = default;

void qwidgetChartDiscretSerie::attachToPlot(QwtPlot *plot)
{
    if (!plot)
        return;
    m_fill->attach(plot);
    m_baseLine->attach(plot);
    m_caption->attach(plot);
    m_fill->setZ(behindZ);
    m_baseLine->setZ(behindZ);
    m_caption->setZ(aboveZ);
    qwidgetChartBasicSerie::attachToPlot(plot);
}

// The caption in the band tells the state already.
void qwidgetChartDiscretSerie::updateLabel(const QPointF &)
{
    GetFlag()->setText(QString(), QString());
}

void qwidgetChartDiscretSerie::takeAxes(const Nodes::widgetChartBasicSerie &node)
{
    qwidgetChartBasicSerie::takeAxes(node);
    m_fill->setAxes(xAxis(), yAxis());
    m_baseLine->setAxes(xAxis(), yAxis());
    m_caption->setAxes(xAxis(), yAxis());
}

void qwidgetChartDiscretSerie::updateArchPoints(
    const std::vector<Nodes::SignalHistoryResponse> &answer)
{
    points()->clear();
    qwidgetChartBasicSerie::updateArchPoints(answer);
}

void qwidgetChartDiscretSerie::setVisible(bool isVisible)
{
    m_fill->setVisible(isVisible);
    m_baseLine->setVisible(isVisible);
    m_caption->setVisible(isVisible);
    qwidgetChartBasicSerie::setVisible(isVisible);
}

float qwidgetChartDiscretSerie::offsetOf(const Nodes::widgetChartBasicSerie &node) const
{
    const auto *group = dynamic_cast<const Nodes::widgetChartGroup *>(node.GetParent());
    return group ? DiscretStack::offsetOf(*group, node) : node.GetOffsetY();
}

QwtPlotCurve::CurveStyle
qwidgetChartDiscretSerie::styleOf(const Nodes::widgetChartBasicSerie &) const
{
    return QwtPlotCurve::Steps;
}

double qwidgetChartDiscretSerie::drawn(double number) const
{
    return std::isfinite(number) && number != 0 ? 1 : number;
}

QString qwidgetChartDiscretSerie::textOf(const Nodes::SignalValue &value) const
{
    const auto *node = dynamic_cast<Nodes::widgetChartDiscretSerie *>(getNode());
    const QString marked = qwidgetChartBasicSerie::textOf(value);
    if (!node || !std::isfinite(value.ToDouble()) || value.GetQuality() == Nodes::Quality::Bad)
        return marked;
    const QString state =
        QString::fromStdString(value.ToDouble() != 0 ? node->GetOnText() : node->GetOffText());
    const int mark = marked.lastIndexOf(QLatin1Char(' '));
    return value.IsGood() || mark < 0 ? state : state + marked.mid(mark);
}

QString qwidgetChartDiscretSerie::caption() const
{
    return getData(int(SerieColumn::Name), Qt::DisplayRole).toString() + QStringLiteral(": ") +
           getData(int(SerieColumn::Value), Qt::DisplayRole).toString();
}

} // namespace Widgets
