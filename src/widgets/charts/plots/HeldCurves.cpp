#include "widgets/charts/plots/HeldCurves.h"

#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/PlotCanvas.h"

#include <qwt_scale_map.h>

#include <QPainter>

namespace Widgets {

namespace {

constexpr double belowCurves = 1.9;

} // namespace

HeldCurves::HeldCurves(Plot &plot, const QList<QwtPlotItem *> &items)
    : m_window(plot.axisInterval(QwtAxisId(QwtAxis::xBottom)))
{
    setZ(belowCurves);
    const QWidget &canvas = *plot.plotCanvas();
    const double scale = canvas.devicePixelRatioF();
    m_picture = QPixmap(canvas.size() * scale);
    m_picture.setDevicePixelRatio(scale);
    m_picture.fill(Qt::transparent);
    QPainter painter(&m_picture);
    for (const QwtPlotItem *item : items) {
        if (!item->isVisible())
            continue;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing,
                              item->testRenderHint(QwtPlotItem::RenderAntialiased));
        item->draw(&painter, plot.QwtPlot::canvasMap(item->xAxis()),
                   plot.QwtPlot::canvasMap(item->yAxis()), canvas.contentsRect());
        painter.restore();
    }
    painter.end();
    attach(&plot);
}

HeldCurves::~HeldCurves()
{
    detach();
}

void HeldCurves::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
                      const QRectF &canvasRect) const
{
    const double left = xMap.transform(m_window.minValue());
    const double right = xMap.transform(m_window.maxValue());
    painter->drawPixmap(QRectF(left, canvasRect.top(), right - left, canvasRect.height()),
                        m_picture, QRectF(m_picture.rect()));
}

} // namespace Widgets
