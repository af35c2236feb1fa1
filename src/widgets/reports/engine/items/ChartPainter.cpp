#include "widgets/reports/engine/items/ChartPainter.h"

#include "widgets/reports/engine/expressions/ContentExpander.h"
#include "widgets/reports/engine/items/ChartFrame.h"
#include "widgets/reports/engine/items/ChartLegend.h"
#include "widgets/reports/engine/items/ItemContent.h"
#include "widgets/reports/engine/items/PieDrawing.h"

#include <QFont>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace LimeReport {

namespace {

constexpr int textUnits = 28; // 0.1 mm, as all here
constexpr double titleRoom = 55;
constexpr double lineWidth = 4;
constexpr double barShare = 0.8; // of a category's room

void drawLines(QPainter &painter, const ChartFrame &frame, const ChartData::Series &series)
{
    QPen pen(series.color, lineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    int lone = -1; // a value between two gaps would not be seen
    for (int i = 0; i < series.x.size(); ++i) {
        if (std::isnan(series.y[i]))
            continue;
        const bool isJoined = i > 0 && !std::isnan(series.y[i - 1]);
        const bool goesOn = i + 1 < series.x.size() && !std::isnan(series.y[i + 1]);
        lone = isJoined || goesOn ? -1 : i;
        if (isJoined) {
            const bool isDoubtful = series.doubtful.testBit(i) || series.doubtful.testBit(i - 1);
            pen.setStyle(isDoubtful ? Qt::DotLine : Qt::SolidLine);
            painter.setPen(pen);
            painter.drawLine(frame.point(series.x[i - 1], series.y[i - 1]),
                             frame.point(series.x[i], series.y[i]));
        } else if (lone == i) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(series.color);
            painter.drawEllipse(frame.point(series.x[i], series.y[i]), lineWidth, lineWidth);
        }
    }
}

void drawBars(QPainter &painter, const ChartFrame &frame, const ChartData::Series &series,
              int number, int count, bool isTurned)
{
    const double room = frame.categoryRoom() * barShare;
    const double thick = room / count;
    for (int i = 0; i < series.x.size(); ++i) {
        if (std::isnan(series.y[i]))
            continue;
        const QPointF foot = frame.point(series.x[i], frame.floor());
        const QPointF top = frame.point(series.x[i], series.y[i]);
        const double side = -room / 2 + number * thick;
        const QRectF bar = isTurned
                               ? QRectF(foot + QPointF(0, side), top + QPointF(0, side + thick))
                               : QRectF(foot + QPointF(side, 0), top + QPointF(side + thick, 0));
        const bool isDoubtful = series.doubtful.testBit(i);
        painter.setPen(isDoubtful ? QPen(series.color, 2, Qt::DotLine) : QPen(Qt::NoPen));
        painter.setBrush(isDoubtful ? QBrush(series.color, Qt::BDiagPattern)
                                    : QBrush(series.color));
        painter.drawRect(bar.normalized());
    }
}

void drawSeries(QPainter &painter, const ChartFrame &frame, const ChartData &data)
{
    const int bars = int(std::count_if(data.series.begin(), data.series.end(),
                                       [](const ChartData::Series &one) { return one.isBar; }));
    int bar = 0;
    for (const ChartData::Series &series : data.series)
        if (series.isBar)
            drawBars(painter, frame, series, bar++, bars, data.type == ChartData::HorizontalBar);
    for (const ChartData::Series &series : data.series)
        if (!series.isBar)
            drawLines(painter, frame, series);
}

} // namespace

QVariantMap ChartPainter::resolve(const QVariantMap &properties, ReportScope &scope,
                                  ContentExpander &expander) const
{
    ItemFault fault;
    ChartData data = ChartData::read(properties, scope, &fault);
    if (fault.isEmpty() && data.type == ChartData::Pie)
        fault = PieDrawing::faultOf(data);
    if (!fault.isEmpty())
        return ItemContent::refused(scope, fault);
    data.title = expander.expand(data.title, scope).text;
    for (ChartData::Series &series : data.series)
        series.name = expander.expand(series.name, scope).text;
    return data.packed();
}

void ChartPainter::paint(QPainter &painter, const QRectF &rect, double unitsPerMillimetre,
                         const QVariantMap &resolved) const
{
    const ChartData data = ChartData::unpacked(resolved);
    const double scale = unitsPerMillimetre / 10;
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.translate(rect.topLeft());
    painter.scale(scale, scale);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(textUnits);
    painter.setFont(font);
    QRectF room(QPointF(), rect.size() / scale);
    if (!data.title.isEmpty()) {
        painter.setPen(Qt::black);
        painter.drawText(QRectF(room.topLeft(), QSizeF(room.width(), titleRoom)),
                         Qt::AlignHCenter | Qt::AlignVCenter, data.title);
        room.setTop(room.top() + titleRoom);
    }
    if (!data.hasValues()) { // a scale would tell of values that nobody has
        painter.setPen(QColor(0x55, 0x55, 0x55));
        painter.drawText(room, Qt::AlignCenter, QStringLiteral("Нет данных"));
    } else if (data.type == ChartData::Pie) {
        PieDrawing::draw(painter, room, data);
    } else {
        const ChartLegend legend(data, room.width(), painter);
        const ChartFrame frame(data, room.adjusted(0, 0, 0, -legend.height()), painter);
        frame.draw(painter);
        painter.setClipRect(frame.plot().adjusted(-lineWidth, -lineWidth, lineWidth, lineWidth),
                            Qt::IntersectClip);
        drawSeries(painter, frame, data);
        painter.setClipRect(room, Qt::ReplaceClip);
        legend.draw(painter, room.bottom() - legend.height());
    }
    painter.restore();
}

} // namespace LimeReport
