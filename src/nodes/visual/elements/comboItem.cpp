#include "nodes/visual/elements/comboItem.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo comboItem::Kind()
{
    return KindBuilder::For<comboItem>(NodeType::enNodeSubtype(0x9010), "comboItem", "Choice",
                                       "Вариант списка")
        .Property<&comboItem::m_text>(9101, "text", "Text", "Текст")
        .Property<&comboItem::m_value>(9102, "value", "Value", "Значение");
}

} // namespace Nodes
