#include "editor/review/ReviewTexts.h"

#include "editor/review/ReviewScreen.h"
#include "widgets/elements/painting/ElementPainting.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetMultiLabel.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "utils/convert/ValueConversions.h"

#include <QFontMetrics>
#include <QStyle>

#include <cmath>

namespace Editor {

using Nodes::BasicWidget;

namespace {

void add(QStringList &texts, const std::string &text)
{
    const QString shown =
        Widgets::ElementPainting::withLineBreaks(QString::fromStdString(text)).remove('\r');
    if (!shown.trimmed().isEmpty() && !texts.contains(shown))
        texts << shown;
}

void addValues(QStringList &texts, const BasicWidget &element, const Nodes::BasicSignal &signal)
{
    if (signal.GetValueType() == Nodes::enSignalValueType::String)
        return;
    const bool isYesNo = signal.GetValueType() == Nodes::enSignalValueType::Bool;
    const Nodes::SignalValue ends[] = {
        isYesNo ? Nodes::SignalValue(false) : Nodes::SignalValue(signal.GetMinimum()),
        isYesNo ? Nodes::SignalValue(true) : Nodes::SignalValue(signal.GetMaximum())};
    for (const Nodes::SignalValue &end : ends)
        add(texts, element.GetDisplayText(end));
}

bool laysOutOneText(const BasicWidget &element)
{
    return dynamic_cast<const Nodes::widgetLabel *>(&element) ||
           dynamic_cast<const Nodes::widgetButton *>(&element) ||
           dynamic_cast<const Nodes::widgetSymbol *>(&element);
}

bool isOnItsSide(const BasicWidget &element)
{
    const double angle = valueOf(element, Nodes::AngleProp::Angle).value_or(0);
    return std::abs(std::sin(angle * 3.14159265358979 / 180)) > 0.7;
}

} // namespace

QStringList ReviewTexts::of(const BasicWidget &element)
{
    QStringList texts;
    if (!laysOutOneText(element))
        return texts;
    if (const auto fixed = valueOf(element, Nodes::CaptionProp::Text))
        add(texts, *fixed);
    if (const Nodes::BasicSignal *signal = element.GetSignal())
        addValues(texts, element, *signal);
    for (const auto &child : element.Children()) {
        if (const auto *state = dynamic_cast<const Nodes::widgetState *>(child.get()))
            add(texts, state->GetText());
    }
    return texts;
}

std::optional<QFont> ReviewTexts::fontOf(const BasicWidget &element)
{
    using Prop = Nodes::TextProp;
    const auto size = valueOf(element, Prop::FontSize);
    if (!size)
        return std::nullopt;
    return Utils::NFontToQFont({valueOf(element, Prop::FontFamily).value_or(""), *size,
                                valueOf(element, Prop::Bold).value_or(false),
                                valueOf(element, Prop::Italic).value_or(false), false, false});
}

QSize ReviewTexts::roomIn(const BasicWidget &element, QSize size)
{
    const int border = valueOf(element, Nodes::FrameProp::BorderWidth).value_or(0);
    const QSize room = size - QSize(4 * border, 4 * border);
    return isUpright(element) ? room.transposed() : room;
}

bool ReviewTexts::isUpright(const BasicWidget &element)
{
    return isOnItsSide(element) && !dynamic_cast<const Nodes::widgetSymbol *>(&element);
}

QRect ReviewTexts::placeOf(const BasicWidget &element, const QRect &rect)
{
    const auto *signs = dynamic_cast<const Nodes::widgetMultiLabel *>(&element);
    const std::optional<QFont> font = fontOf(element);
    if (!font || (signs && signs->GetVisibilityMode() != Nodes::widgetMultiLabel::VisibleAlways))
        return {};
    const QStringList texts = of(element);
    const bool isTurned = valueOf(element, Nodes::AngleProp::Angle).value_or(0) != 0;
    if (isTurned || dynamic_cast<const Nodes::widgetButton *>(&element))
        return texts.isEmpty() ? QRect() : rect;
    const QFontMetrics metrics(*font);
    QSize largest(0, 0);
    for (const QString &text : texts)
        largest = largest.expandedTo(needed(element, metrics, text, rect.size()));
    using Prop = Nodes::TextProp;
    const Qt::Alignment alignment = Utils::NAligmentToQtAligment(
        Nodes::enAlignmentHorizontal(valueOf(element, Prop::Align).value_or(0)),
        Nodes::enAlignmentVertical(valueOf(element, Prop::Valign).value_or(0)));
    return QStyle::alignedRect(Qt::LeftToRight, alignment, largest.boundedTo(rect.size()), rect);
}

QSize ReviewTexts::needed(const BasicWidget &element, const QFontMetrics &metrics,
                          const QString &text, QSize room)
{
    const auto *label = dynamic_cast<const Nodes::widgetLabel *>(&element);
    const bool isWrapped = label && label->GetWordWrap();
    return metrics
        .boundingRect(QRect(0, 0, isWrapped ? room.width() : 1 << 20, 1 << 20),
                      isWrapped ? int(Qt::TextWordWrap) : 0, text)
        .size();
}

} // namespace Editor
