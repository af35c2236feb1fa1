#include "widgets/elements/health/RateChart.h"

#include "widgets/charts/axes/TimeSteps.h"
#include "widgets/charts/time/ChartTime.h"
#include "widgets/elements/health/HealthText.h"
#include "widgets/elements/painting/ScaleTicks.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>

namespace Widgets {

namespace {

constexpr int abnormalWidth = 3; // at least, pixels: what matters is not overlooked
constexpr int labelWidth = 110;  // of a time on the axis, with room

QString timeFormat(const TimeStep &step)
{
    if (step.unit == TimeStep::Milliseconds)
        return QStringLiteral("HH:mm");
    return QStringLiteral("dd.MM");
}

} // namespace

void RateChart::setBars(Nodes::Timestamp begin, Nodes::Timestamp step,
                        std::vector<std::uint32_t> bars)
{
    m_begin = begin;
    m_step = std::max<Nodes::Timestamp>(step, 1);
    m_bars = std::move(bars);
    update();
}

QSize RateChart::sizeHint() const
{
    return {480, 200};
}

QRect RateChart::plotArea() const
{
    const QFontMetrics metrics = fontMetrics();
    const int left = metrics.horizontalAdvance(QStringLiteral("0000")) + 12;
    return rect().adjusted(left, metrics.height() / 2 + 8, -16, -metrics.height() - 12);
}

std::uint32_t RateChart::top() const
{
    const auto most = std::max_element(m_bars.begin(), m_bars.end());
    return std::max(most == m_bars.end() ? 0 : *most + *most / 10, Limit + 2);
}

int RateChart::yOf(double count) const
{
    const QRect area = plotArea();
    return area.bottom() - qRound(count / double(top()) * area.height());
}

std::uint32_t RateChart::mostIn(int column, int columns) const
{
    const std::size_t count = m_bars.size();
    const std::size_t from = std::size_t(column) * count / std::size_t(columns);
    const std::size_t to =
        std::max(std::size_t(column + 1) * count / std::size_t(columns), from + 1);
    return *std::max_element(m_bars.begin() + std::ptrdiff_t(from),
                             m_bars.begin() + std::ptrdiff_t(std::min(to, count)));
}

void RateChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawGround(painter);
    const QRect area = plotArea();
    if (m_bars.empty())
        return drawNothing(painter, QStringLiteral("Нет данных за период"));
    if (area.width() < 40 || area.height() < 20)
        return;
    drawScale(painter);
    drawTimes(painter);
    drawBars(painter);
    drawLimit(painter);
}

void RateChart::drawScale(QPainter &painter) const
{
    const QRect area = plotArea();
    const int divisions = std::max(area.height() / (2 * fontMetrics().height()), 1);
    const ScaleTicks ticks = ScaleTicks::make(0, double(top()), divisions);
    const int half = fontMetrics().height() / 2;
    for (const double tick : ticks.major) {
        const int y = yOf(tick);
        if (tick != double(int(tick)) || std::abs(y - yOf(Limit)) < 2 * half)
            continue; // the limit has a number of its own
        painter.setPen(grid);
        painter.drawLine(area.left(), y, area.right(), y);
        painter.setPen(ink);
        painter.drawText(QRect(0, y - half, area.left() - 6, 2 * half),
                         Qt::AlignRight | Qt::AlignVCenter, QString::number(int(tick)));
    }
}

void RateChart::drawTimes(QPainter &painter) const
{
    const QRect area = plotArea();
    const Nodes::Timestamp end = m_begin + m_step * Nodes::Timestamp(m_bars.size());
    const double lower = ChartTime::toX(m_begin);
    const double upper = ChartTime::toX(end);
    const TimeStep step = TimeSteps::forSpan(upper - lower, std::max(area.width() / labelWidth, 1));
    for (const double mark : TimeSteps::marks(step, lower, upper)) {
        const int x = area.left() + qRound((mark - lower) / (upper - lower) * area.width());
        painter.setPen(grid);
        painter.drawLine(x, area.top(), x, area.bottom());
        painter.setPen(ink);
        const QString text = ChartTime::text(mark, timeFormat(step));
        const int width = fontMetrics().horizontalAdvance(text);
        const int left = qBound(2, x - width / 2, this->width() - width - 2);
        painter.drawText(left, area.bottom() + 6 + fontMetrics().ascent(), text);
    }
}

void RateChart::drawBars(QPainter &painter) const
{
    const QRect area = plotArea();
    const int columns = std::min(area.width(), int(m_bars.size()));
    for (int column = 0; column < columns; ++column) {
        const std::uint32_t count = mostIn(column, columns);
        if (count == 0)
            continue;
        const int left = area.left() + column * area.width() / columns;
        const int right = area.left() + (column + 1) * area.width() / columns;
        const int gap = right - left > 4 ? 1 : 0;
        const int y = std::min(yOf(double(count)), area.bottom() - 1); // one alarm is seen
        QRect bar(QPoint(left, y), QPoint(right - 1 - gap, area.bottom()));
        if (count > Limit && bar.width() < abnormalWidth)
            bar.setWidth(abnormalWidth);
        painter.fillRect(bar, count > Limit ? abnormalBar : normalBar);
    }
    painter.setPen(frame);
    painter.drawLine(area.bottomLeft(), area.bottomRight());
}

void RateChart::drawLimit(QPainter &painter) const
{
    const QRect area = plotArea();
    const int y = yOf(Limit);
    painter.setPen(QPen(ink, 1, Qt::DashLine));
    painter.drawLine(area.left(), y, area.right(), y);
    const int half = fontMetrics().height() / 2;
    painter.drawText(QRect(0, y - half, area.left() - 6, 2 * half),
                     Qt::AlignRight | Qt::AlignVCenter, QString::number(Limit));
}

bool RateChart::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip || m_bars.empty())
        return HealthChart::event(event);
    const QRect area = plotArea();
    const auto *help = static_cast<QHelpEvent *>(event);
    const double share = double(help->pos().x() - area.left()) / std::max(area.width(), 1);
    if (share < 0 || share >= 1) {
        QToolTip::hideText();
        return true;
    }
    const auto bar = std::size_t(share * double(m_bars.size()));
    const Nodes::Timestamp at = m_begin + m_step * Nodes::Timestamp(bar);
    QToolTip::showText(
        help->globalPos(),
        QStringLiteral("%1: тревог за 10 минут — %2").arg(HealthText::time(at)).arg(m_bars[bar]),
        this);
    return true;
}

} // namespace Widgets
