#include "nodes/visual/windows/BasicComposition.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/SeenSize.h"

namespace Nodes {

void BasicComposition::Describe(KindBuilder &builder)
{
    builder.Property<&BasicComposition::m_width>(Prop::Width, "Width", "Ширина")
        .Range(1, 32767)
        .Property<&BasicComposition::m_height>(Prop::Height, "Height", "Высота")
        .Range(1, 32767)
        .Property<&BasicComposition::m_isKept>(Prop::Keep, "Keep", "Сохранять при смене")
        .Children({NodeType::TypeLayer});
}

KindInfo BasicComposition::Kind()
{
    return KindBuilder::For<BasicComposition>("composition", "Composition", "Композиция")
        .Inherit<BasicComposition>();
}

void BasicComposition::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    CheckSeenSize(*this, GetSize(), results);
}

} // namespace Nodes
