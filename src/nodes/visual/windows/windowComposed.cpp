#include "nodes/visual/windows/windowComposed.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/BasicComposition.h"

namespace Nodes {

KindInfo windowComposed::Kind()
{
    return KindBuilder::For<windowComposed>("windowComposed", "Composed window", "Составное окно")
        .Inherit<BasicWindow>()
        .Property<&windowComposed::m_composition>(Prop::Composition, "Composition",
                                                  "Начальная композиция")
        .Refers({NodeType::TypeComposition});
}

BasicComposition *windowComposed::GetComposition() const
{
    return dynamic_cast<BasicComposition *>(m_composition.GetNode());
}

void windowComposed::SetComposition(const BasicComposition *composition)
{
    (void)SetProperty(Prop::Composition, NodeLink(composition));
}

BasicComposition *windowComposed::GetCurrentComposition() const
{
    auto *current = dynamic_cast<BasicComposition *>(m_current.GetNode());
    return current ? current : GetComposition();
}

void windowComposed::LoadComposition(BasicComposition *composition)
{
    m_current = composition;
}

} // namespace Nodes
