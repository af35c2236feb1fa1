#include "widgets/charts/zones/EditedZone.h"

#include "widgets/charts/multiaxis/MultiAxisPlot.h"
#include "widgets/charts/plots/PlotHost.h"
#include "widgets/charts/zones/ZoneHandle.h"
#include "widgets/charts/zones/ZoneItem.h"
#include "widgets/context/ActionSink.h"
#include "widgets/context/SceneContext.h"
#include "widgets/elements/input/ValueWriter.h"

#include "nodes/charts/widgetChart.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/values/ValueCell.h"
#include "utils/convert/ValueConversions.h"

#include <boost/any.hpp>

#include <cmath>

namespace Widgets {

namespace {

bool isWritable(const Nodes::BasicSignal &signal)
{
    const Nodes::BasicProperty *property =
        signal.GetPropertyByValueId(Nodes::BasicSignal::Prop::Writable.valueId);
    const boost::any value = property ? property->GetPropertyValue() : boost::any();
    const bool *isSet = boost::any_cast<bool>(&value);
    return isSet && *isSet;
}

} // namespace

EditedZone::EditedZone(MultiAxisPlot &plot, const QwtAxisId &axis, Nodes::widgetChartZone &zone)
    : m_plot(&plot),
      m_axis(axis),
      m_zone(&zone),
      m_item(new ZoneItem),
      m_changes([this](const std::vector<char> &) { redraw(); }, 1)
{
    m_item->setYAxis(axis);
    m_item->attach(&plot);
    for (const bool isUpper : {false, true})
        if (signal(isUpper))
            connectLimit(isUpper);
}

EditedZone::~EditedZone()
{
    for (const Limit &limit : m_limits)
        delete limit.handle;
    if (m_plot && m_plot->itemList().contains(m_item))
        delete m_item;
}

void EditedZone::connectLimit(bool isUpper)
{
    auto *handle = new ZoneHandle(isUpper, m_plot->canvas());
    connect(handle, &ZoneHandle::dragged, this,
            [this, isUpper](double y) { onDragged(isUpper, y); });
    connect(handle, &ZoneHandle::dropped, this, [this, isUpper] { onDropped(isUpper); });
    connect(handle, &ZoneHandle::cancelled, this, &EditedZone::onCancelled);
    m_limits[isUpper].handle = handle;
    m_limits[isUpper].connection = signal(isUpper)->GetCell()->Subscribe(
        [inlet = m_changes.inlet()](const Nodes::SignalValue &) { inlet(0); });
}

PlotHost *EditedZone::host() const
{
    return dynamic_cast<PlotHost *>(m_plot.data());
}

ZoneHandle *EditedZone::handle(bool isUpper) const
{
    return m_limits[isUpper].handle;
}

Nodes::BasicSignal *EditedZone::signal(bool isUpper) const
{
    if (!m_zone)
        return nullptr;
    return isUpper ? m_zone->GetUpperSignal() : m_zone->GetLowerSignal();
}

std::optional<double> EditedZone::value(bool isUpper) const
{
    if (m_limits[isUpper].dragged)
        return m_limits[isUpper].dragged;
    const Nodes::BasicSignal *limit = signal(isUpper);
    if (!limit)
        return !m_zone ? 0 : isUpper ? m_zone->GetUpper() : m_zone->GetLower();
    const Nodes::SignalValue shown = limit->GetShownValue();
    const double number = shown.ToDouble();
    const bool isKnown = shown.GetQuality() == Nodes::Quality::Good && std::isfinite(number);
    return isKnown ? std::optional<double>(number) : std::nullopt;
}

bool EditedZone::mayMove(bool isUpper) const
{
    const Nodes::BasicSignal *limit = signal(isUpper);
    return m_isEnabled && m_zone && m_zone->IsEditable() && host() && host()->isAtWork() && limit &&
           isWritable(*limit) && value(isUpper) &&
           Nodes::CheckAccess(Nodes::PrivilegeWrite, *limit);
}

void EditedZone::update(bool isEnabled)
{
    m_isEnabled = isEnabled;
    refresh();
}

void EditedZone::refresh()
{
    if (!m_plot || !m_zone)
        return;
    const auto lower = value(false);
    const auto upper = value(true);
    m_item->setLook(Utils::NColorToQColor(m_zone->GetColor()),
                    QString::fromStdString(m_zone->GetText()));
    m_item->setLimits(lower && upper ? std::make_optional(QwtInterval(*lower, *upper))
                                     : std::nullopt);
    for (const bool isUpper : {false, true})
        placeHandle(isUpper);
}

void EditedZone::redraw()
{
    refresh();
    if (host())
        host()->scheduleReplot();
}

void EditedZone::placeHandle(bool isUpper)
{
    ZoneHandle *grip = handle(isUpper);
    if (!grip)
        return;
    if (mayMove(isUpper))
        grip->place(m_plot->transform(m_axis, *value(isUpper)));
    else
        grip->hide();
}

double EditedZone::permitted(bool isUpper, double wanted) const
{
    const Nodes::BasicSignal *limit = signal(isUpper);
    const double step = std::pow(10, limit->GetDecimals());
    double number = std::round(wanted * step) / step;
    if (limit->GetMinimum() < limit->GetMaximum())
        number = qBound(limit->GetMinimum(), number, limit->GetMaximum());
    const auto other = value(!isUpper);
    if (other && std::isfinite(*other))
        number = isUpper ? std::max(number, *other) : std::min(number, *other);
    return number;
}

void EditedZone::onDragged(bool isUpper, double y)
{
    const Nodes::BasicSignal *limit = signal(isUpper);
    if (!m_plot || !limit || !mayMove(isUpper))
        return;
    const double inside = qBound(0.0, y, double(m_plot->canvas()->height()));
    const double number = permitted(isUpper, m_plot->invTransform(m_axis, inside));
    m_limits[isUpper].dragged = number;
    m_item->setDragged(number);
    const Nodes::ValueText text(limit);
    handle(isUpper)->setNumber(QString::fromStdString(text.WithUnit(text.OfNumber(number))));
    refresh();
    m_plot->replot(); // follows the hand
}

void EditedZone::onDropped(bool isUpper)
{
    const std::optional<double> wanted = m_limits[isUpper].dragged;
    const double before = [&] {
        m_limits[isUpper].dragged.reset();
        return value(isUpper).value_or(std::nan(""));
    }();
    m_item->setDragged(std::nullopt);
    Nodes::BasicSignal *limit = signal(isUpper);
    const Nodes::ConfigNode *group = m_zone ? m_zone->GetParent() : nullptr;
    const auto *chart =
        group ? dynamic_cast<const Nodes::BasicWidget *>(group->GetParent()) : nullptr;
    if (!host() || !chart || !limit || !wanted || *wanted == before)
        return onCancelled();
    const SceneContext &context = host()->context();
    const Nodes::Result result = context.actions().write(
        *chart, [&] { return limit->WriteValue(Nodes::SignalValue(*wanted)); });
    const QPointer<EditedZone> alive(this);
    ValueWriter::report(context, result);
    if (alive)
        redraw();
}

void EditedZone::onCancelled()
{
    for (Limit &limit : m_limits)
        limit.dragged.reset();
    m_item->setDragged(std::nullopt);
    redraw();
}

} // namespace Widgets
