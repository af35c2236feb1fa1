#include "nodes/visual/elements/comboItem.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo comboItem::Kind()
{
    return KindBuilder::For<comboItem>("comboItem", "Choice", "Вариант списка")
        .Property<&comboItem::m_text>(Prop::Text, "Text", "Текст")
        .Property<&comboItem::m_value>(Prop::Value, "Value", "Значение")
        .Hint("value");
}

} // namespace Nodes
