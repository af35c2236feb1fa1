#include "nodes/actions/kinds/actionChangeCompositionTemplate.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/visual/windows/windowComposed.h"

namespace Nodes {

KindInfo actionChangeCompositionTemplate::Kind()
{
    return KindBuilder::For<actionChangeCompositionTemplate>("actionChangeCompositionTemplate",
                                                             "Change composition template",
                                                             "Открытие композиции по шаблону")
        .Inherit<BasicTemplateAction>()
        .Property<&actionChangeCompositionTemplate::m_composition>(Prop::Composition, "Composition",
                                                                   "Композиция")
        .Refers({NodeType::TypeComposition});
}

windowComposed *actionChangeCompositionTemplate::GetComposedWindow() const
{
    return dynamic_cast<windowComposed *>(GetWindow());
}

compositionTemplate *actionChangeCompositionTemplate::GetCompositionTemplate() const
{
    return dynamic_cast<compositionTemplate *>(m_composition.GetNode());
}

ConfigNode *actionChangeCompositionTemplate::GetTemplate() const
{
    return GetCompositionTemplate();
}

} // namespace Nodes
