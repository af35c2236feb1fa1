// What a plot paints, and when.
#include "widgets/charts/plots/Plot.h"
#include "widgets/charts/plots/PlotCanvas.h"
#include "widgets/charts/series/ISerie.h"

#include "nodes/charts/widgetChartGroup.h"
#include "utils/convert/ValueConversions.h"

#include <qwt_plot_grid.h>

#include <QPainter>

namespace Widgets {

void Plot::setGrid(const Nodes::widgetChartGroup &group)
{
    m_grid->enableY(group.GetMajorY());
    m_grid->enableX(group.GetMajorX());
    m_grid->enableYMin(group.GetMinorY());
    m_grid->enableXMin(group.GetMinorX());
    m_grid->setMajorPen(Utils::NPenToQPen(group.GetMajorPen()));
    m_grid->setMinorPen(Utils::NPenToQPen(group.GetMinorPen()));
}

void Plot::updatePropertyCanvas()
{
    if (Nodes::widgetChartGroup *group = this->group()) {
        setCanvasBackground(QBrush(Utils::NColorToQColor(group->GetBackgroundColor())));
        m_canvas->setCurrentGroup(group);
    }
    m_canvas->onUpdateProperties();
}

void Plot::scheduleReplot()
{
    if (!m_replotTimer.isActive())
        m_replotTimer.start();
}

void Plot::raiseFlags()
{
    const QList<ISerie *> all = series();
    for (ISerie *serie : all)
        serie->raiseFlag();
}

void Plot::replot()
{
    m_nextWindow.reset();
    m_picture = QPixmap();
    raiseFlags();
    MultiAxisPlot::replot();
}

void Plot::drawCanvas(QPainter *painter)
{
    const QTransform view = painter->deviceTransform();
    const bool isPlain = view.type() <= QTransform::TxScale && view.m11() == view.m22();
    if (!isPlain || !(view.m11() > 0)) {
        MultiAxisPlot::drawCanvas(painter);
        return;
    }
    const QSize size = (QSizeF(m_canvas->size()) * view.m11()).toSize().expandedTo({1, 1});
    if (m_picture.size() != size) {
        m_picture = QPixmap(size);
        m_picture.fill(Qt::transparent);
        QPainter drawing(&m_picture);
        drawing.scale(view.m11(), view.m11());
        MultiAxisPlot::drawCanvas(&drawing);
    }
    painter->save();
    painter->scale(1 / view.m11(), 1 / view.m11());
    painter->drawPixmap(0, 0, m_picture);
    painter->restore();
}

void Plot::resizeEvent(QResizeEvent *event)
{
    MultiAxisPlot::resizeEvent(event);
    if (!m_layoutTimer.isActive())
        m_layoutTimer.start();
}

} // namespace Widgets
