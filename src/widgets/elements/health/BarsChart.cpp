#include "widgets/elements/health/BarsChart.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int margin = 8;
constexpr int thickest = 40; // of a row, pixels

} // namespace

void BarsChart::setBars(std::vector<Bar> bars)
{
    m_bars = std::move(bars);
    update();
}

QSize BarsChart::sizeHint() const
{
    const int row = fontMetrics().height() + 6;
    return {360, 2 * margin + row * std::max(int(m_bars.size()), 3)};
}

QRect BarsChart::rowOf(int bar) const
{
    const QRect inner = rect().adjusted(margin, margin / 2, -margin, -margin / 2);
    const int count = std::max(int(m_bars.size()), 1);
    const int height = std::min(inner.height() / count, thickest);
    return {inner.left(), inner.top() + bar * height, inner.width(), height};
}

int BarsChart::barAt(int y) const
{
    for (int bar = 0; bar < int(m_bars.size()); ++bar) {
        const QRect row = rowOf(bar);
        if (y >= row.top() && y <= row.bottom())
            return bar;
    }
    return -1;
}

void BarsChart::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawGround(painter);
    if (m_bars.empty())
        return drawNothing(painter, QStringLiteral("Тревог за период не было"));
    for (int bar = 0; bar < int(m_bars.size()); ++bar)
        drawBar(painter, m_bars[std::size_t(bar)], rowOf(bar));
}

void BarsChart::drawBar(QPainter &painter, const Bar &bar, const QRect &row) const
{
    int figureWidth = 0;
    for (const Bar &each : m_bars)
        figureWidth = std::max(figureWidth, fontMetrics().horizontalAdvance(each.figure));
    const int nameWidth = int(row.width() * m_nameShare);
    const QRect name(row.left(), row.top(), nameWidth - margin, row.height());
    const QRect figure(row.right() - figureWidth, row.top(), figureWidth + 1, row.height());
    const QRect room(row.left() + nameWidth, row.top() + row.height() / 6,
                     figure.left() - row.left() - nameWidth - margin, row.height() * 2 / 3);
    painter.setPen(ink);
    drawText(painter, name, Qt::AlignLeft | Qt::AlignVCenter, bar.name);
    painter.drawText(figure, Qt::AlignRight | Qt::AlignVCenter, bar.figure);
    if (room.width() < 4)
        return;
    const int length = qRound(std::clamp(bar.length, 0.0, 1.0) * room.width());
    painter.fillRect(QRect(room.left(), room.top(), std::max(length, 1), room.height()),
                     bar.isAbnormal ? abnormalBar : normalBar);
    if (bar.target < 0)
        return;
    const int x = room.left() + qRound(std::min(bar.target, 1.0) * room.width());
    painter.setPen(QPen(ground, 4));
    painter.drawLine(x, row.top() + 2, x, row.bottom() - 2);
    painter.setPen(QPen(ink, 2));
    painter.drawLine(x, row.top() + 2, x, row.bottom() - 2);
}

void BarsChart::mousePressEvent(QMouseEvent *event)
{
    const int bar = event->button() == Qt::LeftButton ? barAt(event->pos().y()) : -1;
    if (bar < 0)
        return HealthChart::mousePressEvent(event);
    emit pressed(bar);
}

bool BarsChart::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return HealthChart::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int bar = barAt(help->pos().y());
    const QString text = bar < 0 ? QString()
                                 : m_bars[std::size_t(bar)].name + QStringLiteral(": ") +
                                       m_bars[std::size_t(bar)].figure;
    QToolTip::showText(help->globalPos(), text, this);
    return true;
}

} // namespace Widgets
