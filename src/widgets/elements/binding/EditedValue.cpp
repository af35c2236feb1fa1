#include "widgets/elements/binding/EditedValue.h"

#include "nodes/signals/BasicSignal.h"
#include "nodes/signals/ValueText.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetLabel.h"
#include "nodes/visual/elements/widgetState.h"

#include <algorithm>
#include <cctype>

namespace Widgets {

namespace {

using Nodes::enSignalValueType;
using Nodes::SignalValue;

constexpr std::size_t longNumber = 5; ///< "0.000": few such have two digits before the point

/// Nothing for an element without states.
SignalValue ofStates(const Nodes::BasicWidget &node)
{
    const SignalValue rest(0.0);
    if (Nodes::widgetState::Find(node, rest))
        return rest;
    for (const auto &child : node.Children()) {
        if (const auto *state = dynamic_cast<const Nodes::widgetState *>(child.get()))
            return state->GetSample();
    }
    return {};
}

bool hasTextOfFalse(const Nodes::BasicWidget &node)
{
    if (const auto *label = dynamic_cast<const Nodes::widgetLabel *>(&node))
        return !label->GetTextOf(false).empty();
    const auto *button = dynamic_cast<const Nodes::widgetButton *>(&node);
    return button && !button->GetTextOf(false).empty();
}

std::string formFor(const Nodes::BasicWidget &node, const Nodes::BasicSignal *signal)
{
    const auto *label = dynamic_cast<const Nodes::widgetLabel *>(&node);
    const auto type = signal ? signal->GetValueType() : enSignalValueType::Double;
    if (type != enSignalValueType::Double)
        return EditedValue::formOf("0");
    return EditedValue::formOf(
        Nodes::ValueText(signal, label ? label->GetDecimals() : -1).OfNumber(0));
}

} // namespace

std::string EditedValue::formOf(std::string number)
{
    std::replace_if(
        number.begin(), number.end(), [](unsigned char c) { return std::isdigit(c); }, '#');
    return number.size() < longNumber ? "#" + number : number;
}

SignalValue EditedValue::of(const Nodes::BasicWidget &node)
{
    const SignalValue ofState = ofStates(node);
    if (!ofState.IsEmpty())
        return ofState;
    const Nodes::BasicSignal *signal = node.GetSignal();
    const bool isSwitch = signal && signal->GetValueType() == enSignalValueType::Bool;
    return isSwitch && hasTextOfFalse(node) ? SignalValue(false)
                                            : SignalValue(formFor(node, signal));
}

} // namespace Widgets
