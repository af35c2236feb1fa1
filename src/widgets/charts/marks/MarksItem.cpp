#include "widgets/charts/marks/MarksItem.h"

#include "widgets/charts/time/ChartTime.h"
#include "widgets/events/AlarmSigns.h"

#include <QPainter>

#include <algorithm>

#include <qwt_scale_map.h>

namespace Widgets {

namespace {

const QColor ink(0x20, 0x26, 0x2c);
constexpr int bottomMargin = 2;

// What is no alarm is a page: filled for a warning and graver, empty below.
void drawPage(QPainter &painter, const QRectF &rect, Nodes::EventLevel level)
{
    const QRectF page = rect.adjusted(4, 2, -4, -2);
    painter.setPen(QPen(ink, 1.5));
    painter.setBrush(level <= Nodes::LevelWarning ? ink : QColor(255, 255, 255, 235));
    painter.drawRect(page);
    painter.setPen(QPen(level <= Nodes::LevelWarning ? QColor(Qt::white) : ink, 1));
    for (const double part : {0.3, 0.5, 0.7})
        painter.drawLine(QPointF(page.left() + 2.5, page.top() + page.height() * part),
                         QPointF(page.right() - 2.5, page.top() + page.height() * part));
}

} // namespace

MarksItem::MarksItem()
{
    setZ(30);
}

void MarksItem::setEvents(const std::vector<Nodes::BasicEvent> &events)
{
    m_events = events;
    m_times.clear();
    for (const Nodes::BasicEvent &event : events)
        m_times.push_back(ChartTime::toX(event.time));
}

std::vector<MarkCluster> MarksItem::marks(const QwtScaleMap &xMap, const QRectF &canvasRect) const
{
    const auto begin =
        std::lower_bound(m_times.begin(), m_times.end(), xMap.invTransform(canvasRect.left()));
    const auto end = std::upper_bound(begin, m_times.end(), xMap.invTransform(canvasRect.right()));
    const auto first = begin - m_times.begin();
    std::vector<double> places;
    for (auto time = begin; time != end; ++time)
        places.push_back(xMap.transform(*time));
    std::vector<MarkCluster> marks = ClusterMarks(
        places, {m_events.begin() + first, m_events.begin() + first + (end - begin)}, Spacing);
    for (MarkCluster &mark : marks) {
        mark.first += std::size_t(first);
        mark.gravest += std::size_t(first);
    }
    return marks;
}

QRectF MarksItem::rectOf(const MarkCluster &mark, const QRectF &canvasRect)
{
    const double left = qBound(canvasRect.left(), mark.x - Size / 2.0, canvasRect.right() - Size);
    return {left, canvasRect.bottom() - Size - bottomMargin, double(Size), double(Size)};
}

void MarksItem::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
                     const QRectF &canvasRect) const
{
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    for (const MarkCluster &mark : marks(xMap, canvasRect))
        drawMark(*painter, mark, rectOf(mark, canvasRect));
    painter->restore();
}

void MarksItem::drawMark(QPainter &painter, const MarkCluster &mark, const QRectF &rect) const
{
    const Nodes::BasicEvent &event = m_events[mark.gravest];
    painter.setPen(QPen(QColor(ink.red(), ink.green(), ink.blue(), 110), 1, Qt::DotLine));
    painter.drawLine(QPointF(mark.x, rect.top()), QPointF(mark.x, rect.top() - 24));
    if (event.priority > 0)
        painter.drawPixmap(rect.topLeft(),
                           AlarmSigns::badge(event.alarmState, event.priority, Size));
    else
        drawPage(painter, rect, event.level);
    if (mark.count < 2)
        return;
    const QString count = mark.count > 99 ? QStringLiteral("99+") : QString::number(mark.count);
    QFont font = painter.font();
    font.setPixelSize(10);
    font.setBold(true);
    painter.setFont(font);
    const QRectF label(rect.left() - 2, rect.top() - 13, rect.width() + 4, 12);
    painter.fillRect(label.adjusted(1, 0, -1, 0), QColor(255, 255, 255, 220));
    painter.setPen(ink);
    painter.drawText(label, Qt::AlignCenter, count);
}

} // namespace Widgets
