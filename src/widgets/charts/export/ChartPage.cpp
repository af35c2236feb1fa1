#include "widgets/charts/export/ChartPage.h"

#include "widgets/charts/legend/Legend.h"
#include "widgets/charts/legend/LegendModel.h"
#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/multiaxis/MultiAxisRenderer.h"
#include "widgets/charts/series/ISerie.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/charts/widgetChartBasicSerie.h"

#include <QDateTime>
#include <QPainter>
#include <QPen>

namespace Widgets {

namespace {

constexpr double titlePoints = 14;
constexpr double textPoints = 9;
constexpr int rowHeight = 20; // pixels at 96 dpi
constexpr int headHeight = 52;
constexpr int footHeight = 22;
constexpr double sampleWidth = 40;
const QColor ink(0x20, 0x26, 0x2c);

double unitOf(const QPainter &painter)
{
    return painter.device()->logicalDpiX() / 96.0;
}

void setFont(QPainter &painter, double points, bool isBold)
{
    QFont font = painter.font();
    font.setPointSizeF(points);
    font.setBold(isBold);
    painter.setFont(font);
}

} // namespace

ChartPage::ChartPage(const MultiAxisPlot &plot, const Legend *legend, QString title,
                     QString interval)
    : m_plot(plot), m_legend(legend), m_title(std::move(title)), m_interval(std::move(interval))
{
}

std::vector<int> ChartPage::rows() const
{
    std::vector<int> shown;
    const LegendModel *model = m_legend ? &m_legend->rows() : nullptr;
    for (int row = 0; model && row < model->rowCount(); ++row)
        if (model->serie(row) && model->serie(row)->isVisible())
            shown.push_back(row);
    return shown;
}

int ChartPage::heightFor(int width) const
{
    const double ratio = double(m_plot.height()) / qMax(1, m_plot.width());
    const int legend = m_legend ? (int(rows().size()) + 1) * rowHeight : 0;
    return headHeight + int(width * ratio) + legend + footHeight;
}

void ChartPage::paint(QPainter &painter, const QRectF &page) const
{
    const double unit = unitOf(painter);
    painter.fillRect(page, Qt::white);
    painter.setPen(ink);
    const double top = paintHead(painter, page);
    const double bottom = paintFoot(painter, page);
    const double legend = m_legend ? double(rows().size() + 1) * rowHeight * unit : 0;
    const QRectF plot(page.left(), top, page.width(), bottom - legend - top);
    MultiAxisRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    // It only reads the plot, but asks for more.
    renderer.render(const_cast<MultiAxisPlot *>(&m_plot), &painter, plot);
    if (m_legend)
        paintLegend(painter, QRectF(page.left(), plot.bottom(), page.width(), legend));
}

double ChartPage::paintHead(QPainter &painter, const QRectF &page) const
{
    const double unit = unitOf(painter);
    const QRectF head(page.left(), page.top(), page.width(), headHeight * unit);
    setFont(painter, titlePoints, true);
    painter.drawText(
        head.adjusted(8 * unit, 4 * unit, -8 * unit, 0), Qt::AlignLeft | Qt::AlignTop,
        painter.fontMetrics().elidedText(m_title, Qt::ElideRight, int(head.width() - 16 * unit)));
    setFont(painter, textPoints, false);
    painter.drawText(head.adjusted(8 * unit, 0, -8 * unit, -4 * unit),
                     Qt::AlignLeft | Qt::AlignBottom, m_interval);
    return head.bottom();
}

double ChartPage::paintFoot(QPainter &painter, const QRectF &page) const
{
    const double unit = unitOf(painter);
    const QRectF foot(page.left(), page.bottom() - footHeight * unit, page.width(),
                      footHeight * unit);
    setFont(painter, textPoints, false);
    const QDateTime now = QDateTime::currentDateTime();
    painter.drawText(
        foot.adjusted(8 * unit, 0, -8 * unit, 0), Qt::AlignRight | Qt::AlignVCenter,
        QStringLiteral("Сформировано %1").arg(now.toString(QStringLiteral("dd.MM.yyyy HH:mm:ss"))));
    return foot.top();
}

std::vector<ChartPage::Column> ChartPage::columnsOf(const QPainter &painter, double width) const
{
    const double unit = unitOf(painter);
    const LegendModel &model = m_legend->rows();
    std::vector<Column> columns;
    double others = 0;
    for (const SerieColumn column : m_legend->columns()) {
        if (column == SerieColumn::Visible)
            continue;
        const int number = int(column);
        double widest = column == SerieColumn::Color ? sampleWidth * unit : 0;
        if (column != SerieColumn::Name && column != SerieColumn::Color) {
            const auto widen = [&](const QVariant &text) {
                widest = qMax(widest,
                              painter.fontMetrics().horizontalAdvance(text.toString()) + 16 * unit);
            };
            widen(model.headerData(number, Qt::Horizontal, Qt::DisplayRole));
            for (const int row : rows())
                widen(model.index(row, number).data());
        }
        columns.push_back({number, widest});
        others += widest;
    }
    for (Column &column : columns)
        if (column.number == int(SerieColumn::Name))
            column.width = qMax(0.0, width - others);
    return columns;
}

void ChartPage::paintLegend(QPainter &painter, const QRectF &place) const
{
    const double unit = unitOf(painter);
    const double height = rowHeight * unit;
    setFont(painter, textPoints, false);
    painter.setPen(ink);
    const std::vector<Column> columns = columnsOf(painter, place.width() - 16 * unit);
    const std::vector<int> shown = rows();
    for (int line = -1; line < int(shown.size()); ++line) {
        QRectF cell(place.left() + 8 * unit, place.top() + (line + 1) * height, 0, height);
        for (const Column &column : columns) {
            cell.setWidth(column.width);
            paintCell(painter, line < 0 ? -1 : shown[std::size_t(line)], column, cell);
            cell.moveLeft(cell.right());
        }
    }
    painter.setPen(QPen(ink, unit));
    painter.drawLine(QPointF(place.left() + 8 * unit, place.top() + height),
                     QPointF(place.right() - 8 * unit, place.top() + height));
}

void ChartPage::paintCell(QPainter &painter, int row, const Column &column,
                          const QRectF &cell) const
{
    const double unit = unitOf(painter);
    const LegendModel &model = m_legend->rows();
    if (row >= 0 && column.number == int(SerieColumn::Color)) {
        QPen pen = model.index(row, column.number).data(SerieLineRole).value<QPen>();
        pen.setWidthF(qMax(1.5, pen.widthF()) * unit);
        painter.save();
        painter.setPen(pen);
        painter.drawLine(QPointF(cell.left(), cell.center().y()),
                         QPointF(cell.right() - 8 * unit, cell.center().y()));
        painter.restore();
        return;
    }
    const QModelIndex index = row < 0 ? QModelIndex() : model.index(row, column.number);
    const auto get = [&](int role) {
        return row < 0 ? model.headerData(column.number, Qt::Horizontal, role) : index.data(role);
    };
    const QRectF inner = cell.adjusted(0, 0, -8 * unit, 0);
    painter.drawText(inner, get(Qt::TextAlignmentRole).toInt(),
                     painter.fontMetrics().elidedText(get(Qt::DisplayRole).toString(),
                                                      Qt::ElideRight, int(inner.width() + 1)));
    const QVariant quality = get(SerieQualityRole);
    if (row >= 0 && quality.isValid() && quality.toInt() != int(Nodes::Quality::Good))
        ElementPainting::drawQualityMark(painter, cell.toRect(), Nodes::Quality(quality.toInt()),
                                         Qt::AlignRight);
}

} // namespace Widgets
