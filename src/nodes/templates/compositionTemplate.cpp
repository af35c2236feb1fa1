#include "nodes/templates/compositionTemplate.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

KindInfo compositionTemplate::Kind()
{
    return KindBuilder::For<compositionTemplate>("compositionTemplate", "Composition template",
                                                 "Шаблон композиции")
        .Inherit<BasicComposition>()
        .Property<&compositionTemplate::m_titleText>(Prop::Title, "Title of instances",
                                                     "Заголовок экземпляров")
        .Hint("title")
        .Children({NodeType::TypeAction, NodeType(NodeType::SubtypeTemplateParameter)});
}

} // namespace Nodes
