#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/values/NRect.h"
#include "nodes/visual/ActionLists.h"
#include "nodes/visual/SharedProperties.h"

namespace Nodes {

class KindBuilder;

/// A window of the operator: geometry, decoration, action lists, and its elements as children.
class NODES_EXPORT BasicWindow : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeWindow;
    struct Prop : GeometryProp, GestureProp
    {
        static constexpr PropertyId<int> Border{18001, "border"};
        static constexpr PropertyId<bool> CloseButton{18002, "closeButton"};
        static constexpr PropertyId<bool> Frame{18003, "frame"};
        static constexpr PropertyId<int> Modality{18004, "modality"};
        static constexpr PropertyId<NColor> Background{18005, "background"};
        static constexpr PropertyId<NodeLinks> OnOpen{18010, "onOpen"};
        static constexpr PropertyId<NodeLinks> OnClose{18011, "onClose"};
    };

    enum enBorderType { BorderFixed = 1, BorderResizable = 2, BorderFrameless = 3 };
    enum enModality { ModalityNone = 0, ModalityWindow = 1, ModalityApplication = 2 };

    static KindInfo Kind();

    /// What the title bar shows: the node's name unless another text was set.
    const std::string &GetTitle() const { return m_title.empty() ? GetName() : m_title; }
    /// Run-time state, never saved; "" brings the name back.
    void SetTitle(std::string title) { m_title = std::move(title); }

    NRect GetGeometry() const { return {m_x, m_y, m_width, m_height}; }
    enBorderType GetBorderType() const { return enBorderType(m_borderType); }
    bool HasCloseButton() const { return m_hasCloseButton; }
    /// The window keeps its own size inside a decorated frame instead of the frame wrapping it.
    bool HasFrame() const { return m_hasFrame; }
    enModality GetModality() const { return enModality(m_modality); }
    NColor GetBackgroundColor() const { return m_backgroundColor; }
    ActionLists GetActionLists() const
    {
        return {m_onPress, m_onRelease, m_onEnter, m_onMove, m_onLeave};
    }
    const NodeLinks &GetOnOpenActions() const { return m_onOpen; }
    const NodeLinks &GetOnCloseActions() const { return m_onClose; }
    AuthPrivArray GetAvailablePrivs() const override;
    void Validate(ValidationResults &results) const override;

protected:
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;

private:
    std::string m_title;
    int m_x = 0;
    int m_y = 0;
    int m_width = 800;
    int m_height = 600;
    int m_borderType = BorderFrameless;
    bool m_hasCloseButton = false;
    bool m_hasFrame = false;
    int m_modality = ModalityNone;
    NColor m_backgroundColor{214, 218, 222};
    NodeLinks m_onPress;
    NodeLinks m_onRelease;
    NodeLinks m_onEnter;
    NodeLinks m_onMove;
    NodeLinks m_onLeave;
    NodeLinks m_onOpen;
    NodeLinks m_onClose;
};

} // namespace Nodes
