#include "widgets/charts/multiaxis/MultiAxisPlot.h"

#include "widgets/charts/multiaxis/ExtraAxis.h"
#include "widgets/charts/multiaxis/MultiAxisAttached.h"
#include "widgets/charts/multiaxis/MultiAxisLayout.h"

#include <qwt_scale_engine.h>
#include <qwt_scale_map.h>
#include <qwt_scale_widget.h>

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>
#include <utility>

namespace Widgets {

namespace {

// As in Qwt: title, scales and canvas are laid out with the border distances of the pass before.
constexpr int maxLayoutPasses = 3;

} // namespace

MultiAxisPlot::MultiAxisPlot(QWidget *parent)
    : QwtPlot(parent), m_layout(new MultiAxisLayout(*this))
{
    qRegisterMetaType<QwtAxisId>();
    setPlotLayout(m_layout);
}

MultiAxisPlot::~MultiAxisPlot()
{
    // Items ask for their axes while they are detached: as long as there are some.
    setAutoReplot(false);
    detachItems(QwtPlotItem::Rtti_PlotItem, autoDelete());
    for (auto &side : m_extra)
        const auto gone = std::exchange(side, {}); // what goes is not found on its way out
}

void MultiAxisPlot::setAxesCount(int position, int count)
{
    if (!QwtAxis::isValid(position))
        return;
    auto &axes = m_extra[position];
    const std::size_t further = std::size_t(std::max(count, 1) - 1);
    const bool changesLayout = further < axes.size();
    std::vector<std::unique_ptr<ExtraAxis>> gone;
    while (axes.size() > further) {
        gone.push_back(std::move(axes.back()));
        axes.pop_back();
    }
    while (axes.size() < further)
        axes.push_back(
            std::make_unique<ExtraAxis>(QwtAxisId(position, int(axes.size()) + 1), this));
    if (changesLayout)
        updateLayout();
}

int MultiAxisPlot::axesCount(int position, bool onlyVisible) const
{
    if (!QwtAxis::isValid(position))
        return 0;
    const auto &further = m_extra[position];
    if (!onlyVisible)
        return 1 + int(further.size());
    return int(axisEnabled(position)) +
           int(std::count_if(further.begin(), further.end(),
                             [](const auto &axis) { return axis->isVisible(); }));
}

bool MultiAxisPlot::isAxisValid(QwtAxisId axis) const
{
    return isFirst(axis) || extraAxis(axis);
}

bool MultiAxisPlot::isFirst(QwtAxisId axis) const
{
    return axis.id == 0 && QwtAxis::isValid(axis.pos);
}

const std::vector<std::unique_ptr<ExtraAxis>> &MultiAxisPlot::extraAxes(int position) const
{
    return m_extra[position];
}

std::vector<QwtAxisId> MultiAxisPlot::axes(bool onlyVisible) const
{
    std::vector<QwtAxisId> found;
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        for (int i = 0; i < axesCount(position); ++i) {
            if (!onlyVisible || isAxisVisible({position, i}))
                found.emplace_back(position, i);
        }
    }
    return found;
}

QwtAxisId MultiAxisPlot::axisOf(const QWidget *scale) const
{
    const std::vector<QwtAxisId> all = axes();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](QwtAxisId axis) { return axisWidget(axis) == scale; });
    return found != all.end() && scale ? *found : QwtAxisId();
}

QwtScaleMap MultiAxisPlot::canvasMap(int packed) const
{
    return canvasMap(unpackedAxis(packed));
}

QwtScaleMap MultiAxisPlot::canvasMap(QwtAxisId axis) const
{
    if (!QwtAxis::isValid(axis.pos))
        return {};
    const QwtScaleMap side = QwtPlot::canvasMap(axis.pos);
    const ExtraAxis *further = extraAxis(axis);
    return further ? further->mapOn(side) : side;
}

double MultiAxisPlot::transform(QwtAxisId axis, double value) const
{
    return isAxisValid(axis) ? canvasMap(axis).transform(value) : 0.0;
}

double MultiAxisPlot::invTransform(QwtAxisId axis, double position) const
{
    return isAxisValid(axis) ? canvasMap(axis).invTransform(position) : 0.0;
}

void MultiAxisPlot::updateAxes()
{
    m_scalingFirstAxes = true;
    QwtPlot::updateAxes();
    m_scalingFirstAxes = false;
    updateExtraAxes();
    keepBorders();
}

/// Labels that pass the ends of a scale would stretch and shrink the canvas from frame to frame
/// while the chart is panned or follows the present: the room they once needed is kept.
void MultiAxisPlot::keepBorders()
{
    for (const QwtAxisId axis : axes(true)) {
        QwtScaleWidget *scale = axisWidget(axis);
        scale->setMinBorderDist(scale->startBorderDist(), scale->endBorderDist());
    }
}

void MultiAxisPlot::updateExtraAxes()
{
    std::vector<QwtInterval> needed[QwtAxis::PosCount];
    bool any = false;
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        needed[position].resize(m_extra[position].size());
        any = any || !m_extra[position].empty();
    }
    if (!any)
        return;
    const auto add = [&](QwtAxisId axis, double from, double to) {
        if (to >= from && extraAxis(axis) && extraAxis(axis)->isAutoScaled())
            needed[axis.pos][std::size_t(axis.id) - 1] |= QwtInterval(from, to);
    };
    for (QwtPlotItem *item : itemList()) {
        const auto *attached = dynamic_cast<const MultiAxisAttached *>(item);
        if (!attached || !item->isVisible() || !item->testItemAttribute(QwtPlotItem::AutoScale) ||
            (attached->attachedXAxis().id == 0 && attached->attachedYAxis().id == 0))
            continue;
        const QRectF rect = item->boundingRect();
        add(attached->attachedXAxis(), rect.left(), rect.right());
        add(attached->attachedYAxis(), rect.top(), rect.bottom());
    }
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        for (std::size_t i = 0; i < m_extra[position].size(); ++i)
            m_extra[position][i]->update(needed[position][i]);
    }
    tellItems();
}

void MultiAxisPlot::tellItems()
{
    for (QwtPlotItem *item : itemList()) {
        const auto *attached = dynamic_cast<const MultiAxisAttached *>(item);
        if (!attached || !item->testItemInterest(QwtPlotItem::ScaleInterest) ||
            (attached->attachedXAxis().id == 0 && attached->attachedYAxis().id == 0))
            continue;
        item->updateScaleDiv(axisScaleDiv(attached->attachedXAxis()),
                             axisScaleDiv(attached->attachedYAxis()));
    }
}

void MultiAxisPlot::replot()
{
    // QwtPlot::replot() would call its own updateAxes(), which is not virtual.
    const bool automatic = autoReplot();
    setAutoReplot(false);
    updateAxes();
    QCoreApplication::sendPostedEvents(this, QEvent::LayoutRequest);
    if (QWidget *area = canvas()) {
        if (!QMetaObject::invokeMethod(area, "replot", Qt::DirectConnection))
            area->update(area->contentsRect());
    }
    setAutoReplot(automatic);
}

// Ticks and labels follow the length of their scale, and that follows its labels: there are
// pictures that two layouts answer in turn. A scale that moves asks for the next layout, at run
// time without end, so what is asked for from here ends here.
void MultiAxisPlot::updateLayout()
{
    for (int pass = 0; pass < maxLayoutPasses; ++pass) {
        const std::vector<int> before = laidOut();
        QwtPlot::updateLayout();
        if (laidOut() == before)
            break;
    }
    placeExtraAxes();
    QCoreApplication::removePostedEvents(this, QEvent::LayoutRequest);
}

std::vector<int> MultiAxisPlot::laidOut() const
{
    const QRect area = canvas() ? canvas()->geometry() : QRect();
    std::vector<int> state{area.x(), area.y(), area.width(), area.height()};
    for (int position = 0; position < QwtAxis::PosCount; ++position) {
        const QwtScaleWidget *scale = axisWidget(QwtAxisId(position));
        state.push_back(scale ? scale->startBorderDist() : 0);
        state.push_back(scale ? scale->endBorderDist() : 0);
    }
    return state;
}

void MultiAxisPlot::placeExtraAxes()
{
    for (const auto &side : m_extra) {
        for (const auto &axis : side)
            placeExtraAxis(*axis);
    }
}

void MultiAxisPlot::placeExtraAxis(const ExtraAxis &axis)
{
    QwtScaleWidget *scale = axis.widget();
    if (!axis.isVisible() || !canvas()) {
        scale->hide();
        return;
    }
    scale->setGeometry(
        m_layout->scaleRect(axis, QwtPlot::canvasMap(axis.id().pos), canvas()->pos()).toRect());
    scale->show();
}

} // namespace Widgets
