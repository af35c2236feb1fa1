#include "widgets/charts/series/ISerie.h"

#include "widgets/charts/axes/AxisPlaces.h"
#include "widgets/charts/series/SerieColumn.h"

#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartBasicSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "utils/convert/TimeConversions.h"
#include "utils/convert/ValueConversions.h"

#include <cmath>
#include <limits>

namespace Widgets {

namespace {

using Nodes::Quality;

Nodes::NodeLink archiverSourceOf(const Nodes::widgetChartBasicSerie &node)
{
    for (const Nodes::NodeLink &link : node.GetLinks()) {
        if (link.isValid() &&
            link.GetNodeType().GetSubtype() == Nodes::archiverSourceConnector::Code)
            return link;
    }
    return {};
}

/// Behind the number of a value that is not good: told apart without colour and in any font.
QString mark(Quality quality)
{
    switch (quality) {
    case Quality::Good:
        return {};
    case Quality::Uncertain:
        return QStringLiteral(" ?");
    case Quality::Stale:
    case Quality::Bad:
        break;
    }
    return QStringLiteral(" !");
}

} // namespace

ISerie::ISerie(Nodes::widgetChartBasicSerie *node, QObject *parent) : QObject(parent), m_node(node)
{
    if (!node)
        return;
    m_archiverSource = archiverSourceOf(*node);
    m_hasArchiverSource = getArchiverSource() != nullptr;
    m_color = Utils::NColorToQColor(node->GetPenColor());
    m_offsetY = node->GetOffsetY();
    m_plotAreaNo = node->GetPlotAreaNo();
    m_relay.connect(node, {[this](Nodes::BasicProperty *property) {
                               emit updateProperty(property);
                               takeVisible(property);
                               onUpdateProperties();
                           },
                           {},
                           {},
                           [this] { onUpdateProperties(); },
                           {},
                           {},
                           {}});
}

ISerie::~ISerie() = default;

Nodes::widgetChartBasicSerie *ISerie::getNode() const
{
    return m_node.get();
}

// An operator may have hidden or shown it since: only the change itself counts.
void ISerie::takeVisible(const Nodes::BasicProperty *property)
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    if (node && property && property->GetValueId() == Nodes::widgetChartBasicSerie::Prop::Visible)
        setVisible(node->isVisible());
}

void ISerie::takeNode()
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    if (!node)
        return;
    m_color = Utils::NColorToQColor(node->GetPenColor());
    m_plotAreaNo = node->GetPlotAreaNo();
    setOffsetY(offsetOf(*node));
}

float ISerie::offsetOf(const Nodes::widgetChartBasicSerie &node) const
{
    return node.GetOffsetY();
}

void ISerie::setOffsetY(float offset)
{
    if (m_offsetY == offset)
        return;
    m_offsetY = offset;
    emit offsetYChanged();
}

bool ISerie::isLive() const
{
    return getNode() && getNode()->isLive();
}

Nodes::archiverSourceConnector *ISerie::getArchiverSource() const
{
    return dynamic_cast<Nodes::archiverSourceConnector *>(m_archiverSource.GetNode());
}

void ISerie::setMarkerData(QString text)
{
    m_markerData = std::move(text);
    emit informationChaged();
}

void ISerie::setCursor(std::optional<double> x)
{
    if (m_cursor == x)
        return;
    m_cursor = x;
    emit informationChaged();
}

QVariant ISerie::getData(int column, int role) const
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    switch (SerieColumn(column)) {
    case SerieColumn::Visible:
        return role == Qt::CheckStateRole ? QVariant(isVisible() ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    case SerieColumn::Color:
        return colorCell(role);
    case SerieColumn::Name:
        return textCell(node ? QString::fromStdString(node->GetText()) : QString(), role);
    case SerieColumn::CursorValue:
        return m_cursor ? valueCell(valueAt(*m_cursor), role) : QVariant();
    case SerieColumn::Value:
        return valueCell(presentValue(), role);
    case SerieColumn::Minimum:
    case SerieColumn::Maximum:
        return limitCell(SerieColumn(column) == SerieColumn::Maximum, role);
    case SerieColumn::Unit:
        return textCell(node ? QString::fromStdString(node->GetUnit()) : QString(), role);
    case SerieColumn::Axis:
        return textCell(axisTitle(), role);
    case SerieColumn::Count:
        break;
    }
    return {};
}

QVariant ISerie::textCell(const QString &text, int role) const
{
    return role == Qt::DisplayRole || role == Qt::ToolTipRole ? QVariant(text) : QVariant();
}

QVariant ISerie::colorCell(int role) const
{
    if (role == Qt::DecorationRole)
        return m_color;
    return role == SerieLineRole ? QVariant(linePen()) : QVariant();
}

QVariant ISerie::valueCell(const std::optional<Nodes::SignalValue> &value, int role) const
{
    const bool isNumber = value && std::isfinite(value->ToDouble());
    switch (role) {
    case Qt::DisplayRole:
        return value ? textOf(*value) : QString::fromUtf8("—");
    case Qt::ToolTipRole:
        return value ? tr("%1, %2").arg(QString::fromUtf8(Nodes::QualityName(value->GetQuality())),
                                        Utils::timeText(value->GetSourceTime()))
                     : tr("Нет данных");
    case Qt::TextAlignmentRole:
        return int(Qt::AlignRight | Qt::AlignVCenter);
    case SerieNumberRole:
        return isNumber ? value->ToDouble() : std::numeric_limits<double>::quiet_NaN();
    case SerieQualityRole:
        return int(value ? value->GetQuality() : Quality::Bad);
    default:
        return {};
    }
}

QVariant ISerie::limitCell(bool isMaximum, int role) const
{
    const auto range = visibleRange();
    if (!range)
        return valueCell(std::nullopt, role);
    if (role == Qt::ToolTipRole)
        return isMaximum ? tr("Наибольшее на видимом участке")
                         : tr("Наименьшее на видимом участке");
    return valueCell(Nodes::SignalValue(isMaximum ? range->second : range->first), role);
}

QString ISerie::textOf(const Nodes::SignalValue &value) const
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    const Nodes::ValueText text(node ? node->GetSignal() : nullptr);
    const bool isKnown = !value.IsNumber() || std::isfinite(value.ToDouble());
    if (!isKnown || value.GetQuality() == Quality::Bad)
        return QString::fromStdString(text.Of(Nodes::SignalValue(Nodes::Result())));
    return QString::fromStdString(text.Of(value)) + mark(value.GetQuality());
}

std::optional<Nodes::SignalValue> ISerie::presentValue() const
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    const Nodes::BasicSignal *signal = node ? node->GetSignal() : nullptr;
    return signal ? std::optional(signal->GetShownValue()) : std::nullopt;
}

QString ISerie::axisTitle() const
{
    const Nodes::widgetChartBasicSerie *node = getNode();
    const Nodes::widgetChartAxis *axis = node ? node->GetAxisY() : nullptr;
    if (node && !axis) {
        const auto *group = dynamic_cast<Nodes::widgetChartGroup *>(node->GetParent());
        axis = AxisPlaces::nodeOf(group, AxisPlaces::idOf(group, nullptr, false));
    }
    if (!axis)
        return {};
    return QString::fromStdString(axis->GetTitle().empty() ? axis->GetName() : axis->GetTitle());
}

} // namespace Widgets
