#include "nodes/actions/kinds/actionChangeComposition.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/BasicComposition.h"

namespace Nodes {

KindInfo actionChangeComposition::Kind()
{
    return KindBuilder::For<actionChangeComposition>("actionChangeComposition",
                                                     "Change composition", "Смена композиции")
        .Inherit<BasicWindowAction>()
        .Property<&actionChangeComposition::m_composition>(Prop::Composition, "Composition",
                                                           "Композиция")
        .Refers({NodeType::TypeComposition});
}

BasicComposition *actionChangeComposition::GetComposition() const
{
    return dynamic_cast<BasicComposition *>(m_composition.GetNode());
}

} // namespace Nodes
