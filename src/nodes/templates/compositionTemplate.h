#pragma once

#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/windows/BasicComposition.h"

namespace Nodes {

/// A composition opened as instances, each with its own nodes in place of the parameters: what
/// windowTemplate is among windows.
class NODES_EXPORT compositionTemplate : public BasicComposition
{
public:
    static constexpr auto Code = NodeType::SubtypeCompositionTemplate;
    struct Prop : BasicComposition::Prop, TitleProp
    {
    };

    static KindInfo Kind();
    /// Title of the windows that show an instance, see TemplateBinding::Fill; "" means its name.
    const std::string &GetTitleText() const { return m_titleText; }

private:
    std::string m_titleText;
};

} // namespace Nodes
