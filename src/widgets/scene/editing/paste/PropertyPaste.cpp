#include "widgets/scene/editing/paste/PropertyPaste.h"

#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/arrange/EditGroup.h"
#include "widgets/scene/editing/arrange/EditedElements.h"

#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/links/LinkWalk.h"
#include "nodes/visual/BasicWidget.h"

#include <algorithm>

namespace Widgets {

namespace {

bool isOwn(unsigned valueId)
{
    using Prop = Nodes::BasicWidget::Prop;
    using Caption = Nodes::CaptionProp;
    const unsigned own[] = {Prop::X,         Prop::Y,       Prop::Width,      Prop::Height,
                            Prop::ZOrder,    Prop::Visible, Prop::Selectable, Prop::Movable,
                            Prop::Tooltip,   Prop::Group,   Caption::Text,    Caption::OnText,
                            Caption::OffText};
    return std::find(std::begin(own), std::end(own), valueId) != std::end(own);
}

bool isTaken(const Nodes::PropertyDescriptor &d, PropertyPaste::enWhat what)
{
    if (isOwn(d.valueId) || d.binding.type == Nodes::PropertyType::Secret)
        return false;
    return !Nodes::IsLinkProperty(d) || what == PropertyPaste::LooksAndLinks;
}

} // namespace

QUndoCommand *PropertyPaste::apply(const EditedElements &edited, const Nodes::ConfigNode &source,
                                   enWhat what)
{
    EditGroup group(QStringLiteral("Вставка свойств"));
    for (const Nodes::BasicWidget *element : edited.elements) {
        for (const Nodes::PropertyDescriptor &d : source.GetKind()->properties) {
            const Nodes::PropertyDescriptor *own = element->GetKind()->FindProperty(d.valueId);
            if (!own || !own->IsSameAs(d) || !isTaken(d, what) ||
                own->binding.format(*own, *element) == d.binding.format(d, source))
                continue;
            new Utils::ChangePropertyCommand(Nodes::NodeLink(element), d.valueId,
                                             d.binding.get(source), group.parent());
        }
    }
    return group.take();
}

QUndoCommand *PropertyPaste::fromClipboard(const EditedElements &edited, enWhat what)
{
    Nodes::NodesCollection *project =
        edited.elements.empty() ? nullptr : edited.elements.front()->GetNodesCollection();
    if (!project)
        return nullptr;
    const Nodes::NodesArray clones = ElementClipboard::take(*project);
    QUndoCommand *command = clones.empty() ? nullptr : apply(edited, *clones[0].GetNode(), what);
    ElementClipboard::discard(*project, clones.GetLinks());
    return command;
}

} // namespace Widgets
