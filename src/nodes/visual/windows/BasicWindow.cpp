#include "nodes/visual/windows/BasicWindow.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/visual/windows/SeenSize.h"

namespace Nodes {

void BasicWindow::Describe(KindBuilder &builder)
{
    const std::vector<unsigned> actions{NodeType::TypeAction, NodeType::TypeArchiverAction};
    builder.Property<&BasicWindow::m_x>(11001, "x", "X", "X")
        .Range(-32768, 32767)
        .Property<&BasicWindow::m_y>(11002, "y", "Y", "Y")
        .Range(-32768, 32767)
        .Property<&BasicWindow::m_width>(11003, "width", "Width", "Ширина")
        .Range(0, 32767)
        .Property<&BasicWindow::m_height>(11004, "height", "Height", "Высота")
        .Range(0, 32767)
        .Property<&BasicWindow::m_borderType>(18001, "border", "Border", "Рамка")
        .Choice(BorderFixed, "fixed", "Неизменяемая")
        .Choice(BorderResizable, "resizable", "Изменяемая с заголовком")
        .Choice(BorderFrameless, "frameless", "Без рамки")
        .Property<&BasicWindow::m_hasCloseButton>(18002, "closeButton", "Close button",
                                                  "Кнопка закрытия")
        .Property<&BasicWindow::m_hasFrame>(18003, "frame", "Frame", "Собственный размер рамки")
        .Property<&BasicWindow::m_modality>(18004, "modality", "Modality", "Модальность")
        .Choice(ModalityNone, "none", "Нет")
        .Choice(ModalityWindow, "window", "Для окна")
        .Choice(ModalityApplication, "application", "Для приложения")
        .Property<&BasicWindow::m_backgroundColor>(18005, "background", "Background", "Фон")
        .Property<&BasicWindow::m_onOpen>(18010, "onOpen", "On open", "При открытии")
        .Refers(actions)
        .Property<&BasicWindow::m_onClose>(18011, "onClose", "On close", "При закрытии")
        .Refers(actions)
        .Property<&BasicWindow::m_onPress>(12110, "onPress", "On press", "При нажатии")
        .Refers(actions)
        .Property<&BasicWindow::m_onRelease>(12111, "onRelease", "On release", "При отпускании")
        .Refers(actions)
        .Property<&BasicWindow::m_onEnter>(12112, "onEnter", "On enter", "При наведении")
        .Refers(actions)
        .Property<&BasicWindow::m_onMove>(12113, "onMove", "On move", "При движении")
        .Refers(actions)
        .Property<&BasicWindow::m_onLeave>(12114, "onLeave", "On leave", "При уходе указателя")
        .Refers(actions);
}

KindInfo BasicWindow::Kind()
{
    return KindBuilder::For<BasicWindow>(NodeType::SubtypeWindow, "window", "Window", "Окно")
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
