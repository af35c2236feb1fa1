#include "widgets/elements/health/TrialChart.h"

#include "widgets/charts/axes/TimeSteps.h"
#include "widgets/charts/time/ChartTime.h"

#include <QPainter>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int nameWidth = 190;
constexpr int labelWidth = 90;
constexpr int margin = 8;
constexpr int barWidth = 3;

std::uint32_t sumOf(const std::vector<std::uint32_t> &bars, std::size_t from, std::size_t to)
{
    std::uint32_t sum = 0;
    for (std::size_t i = from; i < std::min(to, bars.size()); ++i)
        sum += bars[i];
    return sum;
}

} // namespace

void TrialChart::setVariants(const std::vector<TrialVariant> &variants)
{
    m_lanes.clear();
    for (const TrialVariant &variant : variants) {
        m_lanes.push_back({variant.name, {}, variant.figures.has_value()});
        if (!variant.figures)
            continue;
        m_lanes.back().bars = variant.figures->perBin;
        m_begin = variant.figures->begin;
        m_end = variant.figures->end;
    }
    update();
}

void TrialChart::setCurrent(int lane)
{
    m_current = lane;
    update();
}

QSize TrialChart::sizeHint() const
{
    return {640, 34 * std::max(int(m_lanes.size()), 4) + fontMetrics().height() + 2 * margin};
}

QRect TrialChart::laneArea(int lane) const
{
    const QRect inner =
        rect().adjusted(nameWidth + margin, margin, -margin, -fontMetrics().height() - margin);
    const int count = std::max(int(m_lanes.size()), 1);
    const int top = inner.top() + inner.height() * lane / count;
    const int bottom = inner.top() + inner.height() * (lane + 1) / count;
    return QRect(inner.left(), top, inner.width(), bottom - top).adjusted(0, 4, 0, 0);
}

void TrialChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawGround(painter);
    if (m_lanes.empty() || m_end <= m_begin)
        return drawNothing(painter, QStringLiteral("Ещё не рассчитано"));
    drawTimes(painter);
    for (int lane = 0; lane < int(m_lanes.size()); ++lane)
        drawLane(painter, lane);
}

void TrialChart::drawTimes(QPainter &painter) const
{
    const QRect first = laneArea(0);
    const QRect last = laneArea(int(m_lanes.size()) - 1);
    const double lower = ChartTime::toX(m_begin);
    const double upper = ChartTime::toX(m_end);
    const TimeStep step =
        TimeSteps::forSpan(upper - lower, std::max(first.width() / labelWidth, 1));
    const QString format =
        step.unit == TimeStep::Milliseconds ? QStringLiteral("HH:mm") : QStringLiteral("dd.MM");
    for (const double mark : TimeSteps::marks(step, lower, upper)) {
        const int x = first.left() + qRound((mark - lower) / (upper - lower) * first.width());
        painter.setPen(grid);
        painter.drawLine(x, first.top(), x, last.bottom());
        painter.setPen(ink);
        const QString text = ChartTime::text(mark, format);
        const int width = fontMetrics().horizontalAdvance(text);
        painter.drawText(qBound(nameWidth, x - width / 2, this->width() - width - 2),
                         last.bottom() + 2 + fontMetrics().ascent(), text);
    }
}

std::vector<std::uint32_t> TrialChart::sumsOf(const Lane &lane) const
{
    const auto columns = std::size_t(std::max(laneArea(0).width() / (barWidth + 1), 1));
    std::vector<std::uint32_t> sums;
    for (std::size_t column = 0; column < columns; ++column)
        sums.push_back(sumOf(lane.bars, column * lane.bars.size() / columns,
                             (column + 1) * lane.bars.size() / columns));
    return sums;
}

/// One scale for all lanes: they are to be compared.
std::uint32_t TrialChart::mostOfAll() const
{
    std::uint32_t most = 1;
    for (const Lane &lane : m_lanes) {
        const std::vector<std::uint32_t> sums = sumsOf(lane);
        most = std::max(most, *std::max_element(sums.begin(), sums.end()));
    }
    return most;
}

void TrialChart::drawLane(QPainter &painter, int lane) const
{
    const Lane &shown = m_lanes[std::size_t(lane)];
    const QRect area = laneArea(lane);
    QFont font = painter.font();
    font.setBold(lane == m_current);
    painter.setFont(font);
    painter.setPen(ink);
    drawText(painter, QRect(margin, area.top(), nameWidth - margin, area.height()),
             Qt::AlignLeft | Qt::AlignVCenter, shown.name);
    painter.setPen(frame);
    painter.drawLine(area.bottomLeft(), area.bottomRight());
    const std::vector<std::uint32_t> sums = sumsOf(shown);
    const int columns = int(sums.size());
    const std::uint32_t most = mostOfAll();
    for (int column = 0; column < columns; ++column) {
        const std::uint32_t sum = sums[std::size_t(column)];
        if (sum == 0)
            continue;
        const int height = std::max(int(sum * std::uint32_t(area.height() - 4) / most), 4);
        painter.fillRect(area.left() + column * (barWidth + 1), area.bottom() - height, barWidth,
                         height, lane == m_current ? ink : normalBar);
    }
}

} // namespace Widgets
