#pragma once

#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/windows/BasicWindow.h"

namespace Nodes {

/// A window opened as instances, each with its own nodes in place of the parameters. Actions that
/// its elements need stand below it, so that they follow the instance.
class NODES_EXPORT windowTemplate : public BasicWindow
{
public:
    static constexpr auto Code = NodeType::SubtypeWindowTemplate;
    struct Prop : BasicWindow::Prop, TitleProp
    {
    };

    static KindInfo Kind();
    /// Title of instances, see TemplateBinding::Fill; "" means the instance's name.
    const std::string &GetTitleText() const { return m_titleText; }

private:
    std::string m_titleText;
};

} // namespace Nodes
