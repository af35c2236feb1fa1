#include "widgets/reports/engine/items/ChartFrame.h"

#include "widgets/reports/engine/expressions/ValueText.h"

#include <QDateTime>
#include <QPainter>

#include <qwt_date_scale_engine.h>
#include <qwt_scale_engine.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace LimeReport {

namespace {

constexpr double gap = 10;        // between axis and label
constexpr double lineRoom = 54;   // of a line of labels
constexpr double farthest = 1e15; // where steps of a scale are still told apart
const QColor axisColor(0x55, 0x55, 0x55);
const QColor gridColor(0xd5, 0xd5, 0xd5);

struct Span
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;

    void add(double value)
    {
        if (!std::isnan(value)) {
            low = std::min(low, std::clamp(value, -farthest, farthest));
            high = std::max(high, std::clamp(value, -farthest, farthest));
        }
    }
    // Never empty: a level line stands in the middle.
    void widen()
    {
        if (low > high)
            low = high = 0;
        if (low == high) {
            const double half = low == 0 ? 1 : std::abs(low) * 0.05;
            low -= half;
            high += half;
        }
    }
};

QwtScaleDiv divided(const QwtScaleEngine &engine, Span span, int steps, bool isAligned)
{
    double step = 0;
    span.widen();
    if (isAligned)
        engine.autoScale(steps, span.low, span.high, step);
    return engine.divideScale(span.low, span.high, steps, 0, step);
}

QString timeFormat(double span)
{
    constexpr double day = 86400e3;
    if (span <= 10 * 60e3)
        return QStringLiteral("hh:mm:ss");
    return span <= 2 * day ? QStringLiteral("hh:mm") : QStringLiteral("dd.MM");
}

} // namespace

ChartFrame::ChartFrame(const ChartData &data, const QRectF &rect, QPainter &painter)
    : m_data(data), m_isTurned(data.type == ChartData::HorizontalBar), m_width(rect.width())
{
    scaleValues();
    scaleAxis();
    double widest = 0;
    for (const Tick &tick : m_isTurned ? axisTicks() : valueTicks())
        widest = std::max(widest, painter.fontMetrics().boundingRect(tick.label).width() + gap);
    m_plot = rect.adjusted(std::min(widest + gap, rect.width() / 3), 2 * gap, -2 * gap, -lineRoom);
}

void ChartFrame::scaleValues()
{
    Span span;
    if (m_data.isBars())
        span.add(0);
    for (const ChartData::Series &series : m_data.series)
        for (const double y : series.y)
            span.add(y);
    m_values = divided(QwtLinearScaleEngine(), span, 6, true);
}

void ChartFrame::scaleAxis()
{
    Span span;
    for (const ChartData::Series &series : m_data.series)
        for (const double x : series.x)
            span.add(x);
    if (m_data.axis == ChartData::Axis::Time) {
        m_axis = divided(QwtDateScaleEngine(Qt::LocalTime), span, 8, false);
    } else if (m_data.axis == ChartData::Axis::Number) {
        m_axis = divided(QwtLinearScaleEngine(), span, 8, false);
    } else {
        const bool isEmpty = span.low > span.high;
        m_axis = QwtScaleDiv(isEmpty ? -0.5 : span.low - 0.5, isEmpty ? 0.5 : span.high + 0.5);
    }
}

QVector<ChartFrame::Tick> ChartFrame::valueTicks() const
{
    QVector<Tick> ticks;
    for (const double value : m_values.ticks(QwtScaleDiv::MajorTick)) {
        const bool isZero = std::abs(value) < std::abs(m_values.range()) * 1e-9;
        ticks.append({value, isZero ? QStringLiteral("0") : QString::number(value, 'g', 6)});
    }
    return ticks;
}

QVector<ChartFrame::Tick> ChartFrame::axisTicks() const
{
    QVector<Tick> ticks;
    if (m_data.axis == ChartData::Axis::Category) {
        for (int i = 0; i < m_data.categories.size(); ++i)
            ticks.append({double(i), m_data.categories.at(i)});
        return ticks;
    }
    const QString format = timeFormat(m_axis.range());
    for (const double value : m_axis.ticks(QwtScaleDiv::MajorTick)) {
        const bool isTime = m_data.axis == ChartData::Axis::Time;
        const QDateTime time = QDateTime::fromMSecsSinceEpoch(qint64(isTime ? value : 0));
        ticks.append({value, isTime ? time.toString(format) : QString::number(value, 'g', 8)});
    }
    return ticks;
}

QPointF ChartFrame::point(double x, double y) const
{
    const auto part = [](const QwtScaleDiv &scale, double value) {
        return (std::clamp(value, -farthest, farthest) - scale.lowerBound()) / scale.range();
    };
    const double along = part(m_axis, x);
    const double up = part(m_values, y);
    if (m_isTurned) // first category on top
        return {m_plot.left() + up * m_plot.width(), m_plot.top() + along * m_plot.height()};
    return {m_plot.left() + along * m_plot.width(), m_plot.bottom() - up * m_plot.height()};
}

double ChartFrame::categoryRoom() const
{
    return (m_isTurned ? m_plot.height() : m_plot.width()) / m_axis.range();
}

double ChartFrame::floor() const
{
    return std::clamp(0.0, m_values.lowerBound(), m_values.upperBound());
}

void ChartFrame::drawLabel(QPainter &painter, const QString &label, double at,
                           bool isVertical) const
{
    if (isVertical) {
        const QRectF room(0, at - lineRoom / 2, m_plot.left() - gap, lineRoom);
        painter.drawText(
            room, Qt::AlignRight | Qt::AlignVCenter,
            painter.fontMetrics().elidedText(label, Qt::ElideRight, int(room.width())));
        return;
    }
    const double width = painter.fontMetrics().boundingRect(label).width() + 4;
    const double left = std::clamp(at - width / 2, 0.0, std::max(0.0, m_width - width));
    painter.drawText(QRectF(left, m_plot.bottom() + 14, width, lineRoom),
                     Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, label);
}

void ChartFrame::drawTicks(QPainter &painter, const QVector<Tick> &ticks, bool isVertical) const
{
    const bool isAxis = isVertical == m_isTurned;
    const bool hasGrid = !isAxis || m_data.type == ChartData::GridLines;
    double taken = -std::numeric_limits<double>::infinity(); // end of the label before
    for (const Tick &tick : ticks) {
        const QPointF point = isAxis ? this->point(tick.value, 0) : this->point(0, tick.value);
        const double at = isVertical ? point.y() : point.x();
        if (hasGrid) {
            painter.setPen(QPen(gridColor, 1));
            painter.drawLine(isVertical ? QLineF(m_plot.left(), at, m_plot.right(), at)
                                        : QLineF(at, m_plot.top(), at, m_plot.bottom()));
        }
        const double half =
            (isVertical ? 32 : painter.fontMetrics().boundingRect(tick.label).width() + gap) / 2.0;
        const double order = isVertical && !m_isTurned ? -at : at; // values grow upwards
        if (order - half < taken)
            continue;
        taken = order + half;
        painter.setPen(axisColor);
        drawLabel(painter, tick.label, at, isVertical);
    }
}

void ChartFrame::draw(QPainter &painter) const
{
    drawTicks(painter, m_isTurned ? axisTicks() : valueTicks(), true);
    drawTicks(painter, m_isTurned ? valueTicks() : axisTicks(), false);
    painter.setPen(QPen(axisColor, 2));
    painter.drawLine(m_plot.bottomLeft(), m_plot.bottomRight());
    painter.drawLine(m_plot.topLeft(), m_plot.bottomLeft());
}

} // namespace LimeReport
