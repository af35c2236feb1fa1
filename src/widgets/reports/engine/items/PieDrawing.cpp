#include "widgets/reports/engine/items/PieDrawing.h"

#include "widgets/reports/engine/expressions/ValueText.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace LimeReport::PieDrawing {

namespace {

constexpr int mostSectors = 12; // the smallest go together beyond
constexpr double lineRoom = 42;
constexpr double whole = 360 * 16; // of QPainter's angles

struct Sector
{
    QString label;
    double value;
    bool isDoubtful;
};

QVector<Sector> sectorsOf(const ChartData &data)
{
    const ChartData::Series &series = data.series.first();
    QVector<Sector> sectors;
    for (int i = 0; i < series.y.size(); ++i)
        sectors.append({data.categories.value(i), series.y[i], series.doubtful.testBit(i)});
    std::stable_sort(sectors.begin(), sectors.end(),
                     [](const Sector &a, const Sector &b) { return a.value > b.value; });
    while (sectors.size() > mostSectors) {
        const Sector last = sectors.takeLast();
        Sector &rest = sectors.last();
        rest = {QStringLiteral("прочее"), rest.value + last.value,
                rest.isDoubtful || last.isDoubtful};
    }
    return sectors;
}

// Sectors of one pie are told apart by lightness, and by the order of the list beside it.
QColor colorOf(const QColor &base, int number, int count)
{
    const double share = count > 1 ? double(number) / (count - 1) : 0;
    return QColor::fromHslF(base.hslHueF() < 0 ? 0.6 : base.hslHueF(), 0.35, 0.30 + 0.55 * share);
}

} // namespace

ItemFault faultOf(const ChartData &data)
{
    const QVector<double> &values = data.series.first().y;
    if (std::any_of(values.begin(), values.end(), [](double value) { return !(value >= 0); }))
        return {QStringLiteral(
                    "круговая диаграмма не показывает отрицательных и отсутствующих значений"),
                QStringLiteral("для круговой диаграммы нет всех значений")};
    if (std::accumulate(values.begin(), values.end(), 0.0) > 0)
        return {};
    return {QStringLiteral("для круговой диаграммы нет данных"),
            QStringLiteral("все значения равны нулю")};
}

void draw(QPainter &painter, const QRectF &rect, const ChartData &data)
{
    const QVector<Sector> sectors = sectorsOf(data);
    double sum = 0;
    for (const Sector &sector : sectors)
        sum += sector.value;
    const double size =
        std::min(rect.height(), data.hasLegend ? rect.width() / 2 : rect.width()) - 20;
    const QRectF circle(rect.left() + 10, rect.center().y() - size / 2, size, size);
    double begun = 0;
    double top = rect.center().y() - sectors.size() * lineRoom / 2;
    for (int i = 0; i < sectors.size(); ++i) {
        const Sector &sector = sectors[i];
        const QColor color = colorOf(data.series.first().color, i, sectors.size());
        painter.setPen(QPen(Qt::white, 3));
        painter.setBrush(sector.isDoubtful ? QBrush(color, Qt::BDiagPattern) : QBrush(color));
        const double angle = whole * sector.value / sum;
        painter.drawPie(circle, int(std::lround(whole / 4 - begun - angle)),
                        int(std::lround(angle)));
        begun += angle;
        if (!data.hasLegend)
            continue;
        const double left = circle.right() + 30;
        painter.fillRect(QRectF(left, top + 8, 26, 26), color);
        const QString text =
            QStringLiteral("%1 — %2 (%3 %)")
                .arg(sector.label, ValueText::marked(ValueText::usual(sector.value),
                                                     sector.isDoubtful ? Nodes::Quality::Uncertain
                                                                       : Nodes::Quality::Good))
                .arg(100 * sector.value / sum, 0, 'f', 1);
        painter.setPen(Qt::black);
        const QRectF room(left + 40, top, rect.right() - left - 40, lineRoom);
        painter.drawText(
            room, Qt::AlignLeft | Qt::AlignVCenter,
            painter.fontMetrics().elidedText(text, Qt::ElideMiddle, int(room.width())));
        top += lineRoom;
    }
}

} // namespace LimeReport::PieDrawing
