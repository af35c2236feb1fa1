#include "widgets/reports/engine/items/ChartLegend.h"

#include <QPainter>

namespace LimeReport {

namespace {

constexpr double lineRoom = 42;
constexpr double sampleWidth = 50;
constexpr double gap = 14;

} // namespace

ChartLegend::ChartLegend(const ChartData &data, double width, const QPainter &painter)
    : m_width(width)
{
    if (data.hasLegend)
        for (const ChartData::Series &series : data.series)
            m_entries.append({series.name, series.color, series.isBar, {}});
    if (data.isDoubtfulAny())
        m_entries.append({QStringLiteral("недостоверные значения"), QColor(), false, {}});
    QPointF at(0, 0);
    for (Entry &entry : m_entries) {
        const double room =
            sampleWidth + 3 * gap + painter.fontMetrics().boundingRect(entry.text).width();
        if (at.x() > 0 && at.x() + room > width)
            at = QPointF(0, at.y() + lineRoom);
        entry.at = at;
        at.setX(at.x() + room);
    }
    if (!m_entries.isEmpty())
        m_height = at.y() + lineRoom;
}

void ChartLegend::draw(QPainter &painter, double top) const
{
    for (const Entry &entry : m_entries) {
        const QRectF sample(entry.at + QPointF(0, top), QSizeF(sampleWidth, lineRoom));
        if (entry.isBar) {
            painter.fillRect(sample.adjusted(gap, gap / 2, -gap, -gap / 2), entry.color);
        } else {
            const bool isNote = !entry.color.isValid();
            painter.setPen(QPen(isNote ? QColor(Qt::darkGray) : entry.color, 4,
                                isNote ? Qt::DotLine : Qt::SolidLine));
            painter.drawLine(QPointF(sample.left(), sample.center().y()),
                             QPointF(sample.right(), sample.center().y()));
        }
        painter.setPen(Qt::black);
        const QRectF room(sample.right() + gap, sample.top(), m_width - sample.right() - gap,
                          lineRoom);
        painter.drawText(
            room, Qt::AlignLeft | Qt::AlignVCenter,
            painter.fontMetrics().elidedText(entry.text, Qt::ElideRight, int(room.width())));
    }
}

} // namespace LimeReport
