#include "nodes/actions/BasicOpeningAction.h"

#include "nodes/model/KindBuilder.h"

namespace Nodes {

void BasicOpeningAction::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicPlacingAction>()
        .Property<&BasicOpeningAction::m_openMode>(Prop::Open, "Open mode", "Режим открытия")
        .Choice(OpenAlways, "always", "Всегда новое")
        .Choice(OpenReuseOnDisplay, "display", "Открытое на дисплее")
        .Choice(OpenReuseAnywhere, "anywhere", "Открытое где угодно");
}

} // namespace Nodes
