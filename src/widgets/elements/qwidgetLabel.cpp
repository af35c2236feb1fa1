#include "widgets/elements/qwidgetLabel.h"

#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/visual/elements/widgetMultiLabel.h"
#include "utils/convert/ValueConversions.h"

#include <QPaintEvent>
#include <QPainter>

namespace Widgets {

qwidgetLabel::qwidgetLabel(Nodes::BasicWidget *node, QWidget *parent,
                           const SceneContextPtr &context)
    : qlabelBasic(node, parent, context),
      m_label(dynamic_cast<Nodes::widgetLabel *>(node)),
      m_states(dynamic_cast<Nodes::widgetMultiLabel *>(node))
{
    // The element fills its own background: a widget's would be drawn twice.
    setAttribute(Qt::WA_NoSystemBackground);
    qwidgetLabel::onUpdateProperties(nullptr);
}

qwidgetLabel::~qwidgetLabel() = default;

const PropertyBindings &qwidgetLabel::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qwidgetLabel>(Then::Repaint),
        PropertyRow::takes<&qwidgetLabel::takeFont>(Then::Repaint, Prop::FontFamily, Prop::FontSize,
                                                    Prop::Bold, Prop::Italic, Prop::Underline,
                                                    Prop::StrikeOut),
        PropertyRow::takes<&qwidgetLabel::takeLayout>(Then::Repaint, Prop::Align, Prop::Valign,
                                                      Prop::Wrap, Prop::Angle),
        PropertyRow::takes<&qwidgetLabel::takeBorder>(Then::Repaint, Prop::BorderColor,
                                                      Prop::BorderWidth),
        // Those of a state come before them.
        PropertyRow::takes<&qwidgetLabel::takeColors>(Then::Value, Prop::Color, Prop::Background),
        PropertyRow::takes<&qwidgetLabel::takeDisabled>(Then::Repaint, Prop::Disabled),
        PropertyRow::only(Then::Value, Prop::Signal, Prop::Text, Prop::Decimals, Prop::ShowUnit,
                          Prop::OnText, Prop::OffText),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qwidgetLabel::onUpdateProperties(Nodes::BasicProperty *property)
{
    const Nodes::widgetLabel *label = m_label.get();
    if (label && takeOver(*label, property))
        DirectPainting::repaint(*this);
}

void qwidgetLabel::takeFont(const Nodes::widgetLabel &label)
{
    m_font = Utils::NFontToQFont(label.GetFont());
    applyFont();
}

void qwidgetLabel::takeLayout(const Nodes::widgetLabel &label)
{
    m_alignment =
        Utils::NAligmentToQtAligment(label.GetHorizontalAlignment(), label.GetVerticalAlignment());
    m_isWrapped = label.GetWordWrap();
    m_angle = static_cast<float>(label.GetAngle());
}

void qwidgetLabel::takeColors(const Nodes::widgetLabel &label)
{
    m_textColor = Utils::NColorToQColor(label.GetTextColor());
    applyBackground(Utils::NColorToQColor(label.GetBackgroundColor()));
}

void qwidgetLabel::takeDisabled(const Nodes::widgetLabel &label)
{
    m_isDisabled = label.isDisabled();
}

void qwidgetLabel::applyBackground(const QColor &color)
{
    m_backgroundColor = color;
    // A palette of its own costs a label more than all the rest of it; transparent needs none.
    if (palette().color(backgroundRole()) == color || (color.alpha() == 0 && !m_hasPalette))
        return;
    m_hasPalette = true;
    QPalette changed = palette();
    changed.setColor(backgroundRole(), color);
    setPalette(changed);
}

void qwidgetLabel::takeStateColors(const Nodes::widgetMultiLabel &node,
                                   const Nodes::SignalValue &value)
{
    if (!node.GetUsePersonalColor()) {
        m_textColor = Utils::NColorToQColor(node.GetTextColor());
        applyBackground(Utils::NColorToQColor(node.GetBackgroundColor()));
        return;
    }
    Nodes::NColor color(0, 0, 0, 255);
    (void)node.GetStateTextColor(value, color);
    m_textColor = Utils::NColorToQColor(color);
    Nodes::NColor background(255, 255, 255, 255);
    if (node.GetStateBackgroundColor(value, background))
        applyBackground(Utils::NColorToQColor(background));
}

qwidgetLabel::Look qwidgetLabel::look() const
{
    return {m_labelText, m_quality, m_textColor.rgba(), m_backgroundColor.rgba()};
}

void qwidgetLabel::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_label)
        return;
    const Look before = look();
    showValue(take(*m_label, handed, isEditor()));
    if (before.quality != m_quality)
        applyFont();
    if (!(before == look()))
        DirectPainting::repaint(*this);
}

void qwidgetLabel::showValue(const Nodes::SignalValue &value)
{
    if (m_states)
        takeStateColors(*m_states, value);
    m_labelText = QString::fromStdString(m_label->GetDisplayText(value));
}

void qwidgetLabel::applyFont()
{
    QFont font = m_font;
    font.setItalic(font.italic() || m_quality == Nodes::Quality::Stale);
    m_layout.setFont(font);
}

int qwidgetLabel::textFlags() const
{
    return int(m_alignment) | (m_isWrapped ? int(Qt::TextWordWrap) : 0);
}

void qwidgetLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    draw(painter);
}

void qwidgetLabel::paintDirectly(QPainter &painter)
{
    draw(painter);
}

void qwidgetLabel::draw(QPainter &painter)
{
    if (m_backgroundColor.alpha() > 0)
        painter.fillRect(rect(), m_backgroundColor);
    if (!m_label)
        return;
    painter.setPen(m_isDisabled ? palette().color(QPalette::Disabled, QPalette::ButtonText)
                                : m_textColor);
    drawRotatedText(&painter, m_angle, width() / 2, height() / 2, m_labelText);
    ElementPainting::drawBorder(painter, size(), m_borderWidth, m_borderColor);
    drawQualityMark(painter, rect(), m_alignment);
}

void qwidgetLabel::drawRotatedText(QPainter *painter, float angle, int cx, int cy,
                                   QString const &text)
{
    m_layout.draw(*painter, {size(), QPoint(cx, cy), angle, m_borderWidth, textFlags()}, text);
}

} // namespace Widgets
