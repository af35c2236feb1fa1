#include "nodes/visual/windows/BasicWindow.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/SeenSize.h"

namespace Nodes {

void BasicWindow::Describe(KindBuilder &builder)
{
    const std::vector<unsigned> actions{NodeType::TypeAction, NodeType::TypeArchiverAction};
    builder.Property<&BasicWindow::m_x>(Prop::X, "X", "X")
        .Range(-32768, 32767)
        .Property<&BasicWindow::m_y>(Prop::Y, "Y", "Y")
        .Range(-32768, 32767)
        .Property<&BasicWindow::m_width>(Prop::Width, "Width", "Ширина")
        .Range(0, 32767)
        .Property<&BasicWindow::m_height>(Prop::Height, "Height", "Высота")
        .Range(0, 32767)
        .Property<&BasicWindow::m_borderType>(Prop::Border, "Border", "Рамка")
        .Choice(BorderFixed, "fixed", "Неизменяемая")
        .Choice(BorderResizable, "resizable", "Изменяемая с заголовком")
        .Choice(BorderFrameless, "frameless", "Без рамки")
        .Property<&BasicWindow::m_hasCloseButton>(Prop::CloseButton, "Close button",
                                                  "Кнопка закрытия")
        .Property<&BasicWindow::m_hasFrame>(Prop::Frame, "Frame", "Собственный размер рамки")
        .Property<&BasicWindow::m_modality>(Prop::Modality, "Modality", "Модальность")
        .Choice(ModalityNone, "none", "Нет")
        .Choice(ModalityWindow, "window", "Для окна")
        .Choice(ModalityApplication, "application", "Для приложения")
        .Property<&BasicWindow::m_backgroundColor>(Prop::Background, "Background", "Фон")
        .Property<&BasicWindow::m_onOpen>(Prop::OnOpen, "On open", "При открытии")
        .Refers(actions)
        .Property<&BasicWindow::m_onClose>(Prop::OnClose, "On close", "При закрытии")
        .Refers(actions)
        .Property<&BasicWindow::m_onPress>(Prop::OnPress, "On press", "При нажатии")
        .Refers(actions)
        .Property<&BasicWindow::m_onRelease>(Prop::OnRelease, "On release", "При отпускании")
        .Refers(actions)
        .Property<&BasicWindow::m_onEnter>(Prop::OnEnter, "On enter", "При наведении")
        .Refers(actions)
        .Property<&BasicWindow::m_onMove>(Prop::OnMove, "On move", "При движении")
        .Refers(actions)
        .Property<&BasicWindow::m_onLeave>(Prop::OnLeave, "On leave", "При уходе указателя")
        .Refers(actions);
}

KindInfo BasicWindow::Kind()
{
    return KindBuilder::For<BasicWindow>("window", "Window", "Окно")
        .Inherit<BasicWindow>()
        .Children({NodeType::TypeWidget});
}

AuthPrivArray BasicWindow::GetAvailablePrivs() const
{
    AuthPrivArray privileges = ConfigNode::GetAvailablePrivs();
    privileges.insert(privileges.end(), {PrivilegeOpen, PrivilegeClose});
    return privileges;
}

void BasicWindow::Validate(ValidationResults &results) const
{
    ConfigNode::Validate(results);
    CheckSeenSize(*this, {m_width, m_height}, results);
}

} // namespace Nodes
