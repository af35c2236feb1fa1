#include "widgets/elements/qwidgetBargraph.h"

#include "widgets/elements/binding/EditedValue.h"
#include "widgets/elements/binding/ElementTooltip.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/BargraphPainter.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/signals/ValueText.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "utils/convert/ValueConversions.h"

#include <QPainter>

namespace Widgets {

qwidgetBargraph::qwidgetBargraph(Nodes::widgetBargraph *node, QWidget *parent,
                                 const SceneContextPtr &context)
    : QWidget(parent),
      IWidget(node, context),
      m_bargraph(node),
      m_look(std::make_unique<BargraphLook>()),
      m_alarms([this] { onAlarmsChanged(); })
{
    setAttribute(Qt::WA_NoSystemBackground);
    m_binding.bind(this, m_bargraph.get());
    qwidgetBargraph::onUpdateProperties(nullptr);
}

qwidgetBargraph::~qwidgetBargraph() = default;

QString qwidgetBargraph::shownText() const
{
    return m_text;
}

void qwidgetBargraph::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
}

const PropertyBindings &qwidgetBargraph::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetBargraph>(Then::Repaint),
        PropertyRow::takes<&qwidgetBargraph::takeBorder>(Then::Repaint, Prop::BorderColor,
                                                         Prop::BorderWidth),
        PropertyRow::takes<&qwidgetBargraph::takeBackground>(Then::Repaint, Prop::Background),
        PropertyRow::takes<&qwidgetBargraph::takeText>(
            Then::Repaint, Prop::FontFamily, Prop::FontSize, Prop::Bold, Prop::Italic,
            Prop::Underline, Prop::StrikeOut, Prop::Color),
        PropertyRow::takes<&qwidgetBargraph::takeScale>(
            Then::Value, Prop::Signal, Prop::Orientation, Prop::Minimum, Prop::Maximum, Prop::Scale,
            Prop::BarColor, Prop::Zones, Prop::LowLow, Prop::Low, Prop::High, Prop::HighHigh),
        PropertyRow::only(Then::Value, Prop::Value, Prop::SetPoint),
        PropertyRow::only(Then::Repaint, Prop::Disabled),
        // The scale, not the project, places the number.
        PropertyRow::only(Then::Nothing, Prop::Align, Prop::Valign),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetBargraph::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetBargraph *bargraph = m_bargraph.get();
    if (bargraph && takeOver(*bargraph, property))
        DirectPainting::repaint(*this);
}

void qwidgetBargraph::takeText(const Nodes::widgetBargraph &bargraph)
{
    m_look->font = Utils::NFontToQFont(bargraph.GetFont());
    m_look->textColor = Utils::NColorToQColor(bargraph.GetTextColor());
}

// Ends and zones that are not the bargraph's own are the signal's.
void qwidgetBargraph::takeScale(const Nodes::widgetBargraph &bargraph)
{
    m_alarms.setSignals({bargraph.GetSignal()});
    m_look->isVertical = bargraph.GetOrientation() == Nodes::widgetBargraph::Vertical;
    m_look->minimum = bargraph.GetMinimum();
    m_look->maximum = bargraph.GetMaximum();
    m_look->zones = bargraph.GetZones();
    m_look->hasScale = bargraph.GetShowScale();
    m_look->barColor = Utils::NColorToQColor(bargraph.GetBarColor());
}

QString qwidgetBargraph::formOfText() const
{
    const Nodes::ValueText text(m_bargraph->GetSignal());
    return QString::fromStdString(text.WithUnit(EditedValue::formOf(text.OfNumber(0))));
}

void qwidgetBargraph::takeValue(const Nodes::SignalValue &handed)
{
    const Nodes::SignalValue value = take(*m_bargraph, handed, isEditor());
    m_look->isStandIn = isEditor() && (isStandIn() || value.IsEmpty());
    if (!m_look->isStandIn)
        m_quality = value.GetQuality(); // without a signal there is nothing to show
    m_look->mark = m_bargraph->GetAlarmMark(value);
    m_look->quality = m_quality;
    m_look->value = value.ToDouble();
    m_text = m_look->isStandIn ? formOfText()
                               : QString::fromStdString(m_bargraph->GetDisplayText(value));
    m_look->text = m_bargraph->GetShowValue() ? m_text : QString();
    m_look->setPoint.reset();
    if (const auto setPoint = m_bargraph->GetSetPoint()) {
        m_look->isSetPointGood = setPoint->IsGood();
        if (setPoint->GetQuality() != Nodes::Quality::Bad)
            m_look->setPoint = setPoint->ToDouble();
    }
}

void qwidgetBargraph::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_bargraph)
        return;
    takeValue(handed);
    DirectPainting::repaint(*this);
}

// Limits may be tuned while the plant runs.
void qwidgetBargraph::onAlarmsChanged()
{
    if (m_bargraph)
        m_look->zones = m_bargraph->GetZones();
    onValueUpdated(Nodes::SignalValue());
}

void qwidgetBargraph::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintDirectly(painter);
}

void qwidgetBargraph::paintDirectly(QPainter &painter)
{
    painter.save();
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    if (m_bargraph) {
        const int margin = qMax(0, m_borderWidth) + 2;
        m_look->box = rect().adjusted(margin, margin, -margin, -margin);
        BargraphPainter(painter, *m_look).draw();
        ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
        if (m_bargraph->isDisabled())
            ElementPainting::drawDisabledCover(painter, rect());
    }
    painter.restore();
}

bool qwidgetBargraph::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QWidget::event(event);
}

} // namespace Widgets
