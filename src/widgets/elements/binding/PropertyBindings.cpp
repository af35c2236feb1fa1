#include "widgets/elements/binding/PropertyBindings.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/convert/ValueConversions.h"

#include <algorithm>

namespace Widgets {

namespace {

using Prop = Nodes::BasicWidget::Prop;

constexpr PropertyRow everyElement[] = {
    // The host's
    PropertyRow::only(Then::Nothing, Prop::ZOrder, Prop::Visible, Prop::Selectable, Prop::Movable,
                      Prop::AlarmIndication, Prop::Group),
    // Read when the operator asks, or when they are run
    PropertyRow::only(Then::Nothing, Prop::Tooltip, Prop::OnPress, Prop::OnRelease, Prop::OnEnter,
                      Prop::OnMove, Prop::OnLeave, Prop::OnFocusLoss, Prop::AfterWrite),
};

} // namespace

const PropertyBindings PropertyBindings::ofEveryElement(everyElement, nullptr);

QRect PropertyRow::placeOf(const Nodes::BasicWidget &node)
{
    return Utils::NRectToQRect(node.GetGeometry());
}

bool PropertyBindings::has(unsigned valueId) const
{
    return std::any_of(m_rows, m_rows + m_count,
                       [valueId](const PropertyRow &row) { return row.has(valueId); }) ||
           (m_base && m_base->has(valueId));
}

Then PropertyBindings::take(IWidget &element, const Nodes::BasicWidget &node,
                            const Nodes::BasicProperty *property) const
{
    const unsigned valueId = property && has(property->GetValueId()) ? property->GetValueId() : 0;
    return takeRows(element, node, valueId);
}

// 0: all.
Then PropertyBindings::takeRows(IWidget &element, const Nodes::BasicWidget &node,
                                unsigned valueId) const
{
    Then then = m_base ? m_base->takeRows(element, node, valueId) : Then::Nothing;
    for (std::size_t i = 0; i < m_count; ++i) {
        const PropertyRow &row = m_rows[i];
        if (valueId != 0 && !row.has(valueId))
            continue;
        row.take(element, node);
        then = std::max(then, row.then());
    }
    return then;
}

} // namespace Widgets
