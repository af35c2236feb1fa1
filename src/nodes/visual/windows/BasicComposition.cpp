#include "nodes/visual/windows/BasicComposition.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/SeenSize.h"

namespace Nodes {

void BasicComposition::Describe(KindBuilder &builder)
{
    builder.Property<&BasicComposition::m_width>(11003, "width", "Width", "Ширина")
        .Range(1, 32767)
        .Property<&BasicComposition::m_height>(11004, "height", "Height", "Высота")
        .Range(1, 32767)
        .Property<&BasicComposition::m_isKept>(19001, "keep", "Keep", "Сохранять при смене")
        .Children({NodeType::TypeLayer});
}

KindInfo BasicComposition::Kind()
{
    return KindBuilder::For<BasicComposition>(NodeType::SubtypeComposition, "composition",
                                              "Composition", "Композиция")
        .Inherit<BasicComposition>();
}

void BasicComposition::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    CheckSeenSize(*this, GetSize(), results);
}

} // namespace Nodes
