#include "nodes/actions/BasicWindowAction.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/BasicWindow.h"

namespace Nodes {

void BasicWindowAction::Describe(KindBuilder &builder)
{
    builder.Property<&BasicWindowAction::m_window>(Prop::Window, "Window", "Окно")
        .Refers({NodeType::TypeWindow})
        .Property<&BasicWindowAction::m_display>(Prop::Display, "Display", "Дисплей")
        .Range(-1, 64);
}

BasicWindow *BasicWindowAction::GetWindow() const
{
    return dynamic_cast<BasicWindow *>(m_window.GetNode());
}

} // namespace Nodes
