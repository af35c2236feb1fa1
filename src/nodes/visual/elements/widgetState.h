#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/values/SignalValue.h"
#include "nodes/visual/elements/SymbolLook.h"

namespace Nodes {

/// One state of a multi-state element: the range of values it stands for and its looks.
class NODES_EXPORT widgetState : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x9001);
    struct Prop
    {
        static constexpr PropertyId<double> From{9001, "from"};
        static constexpr PropertyId<double> To{9002, "to"};
        static constexpr PropertyId<std::string> Match{9003, "match"};
        static constexpr PropertyId<std::string> Text{9004, "text"};
        static constexpr PropertyId<bool> OwnColor{9005, "ownColor"};
        static constexpr PropertyId<NColor> Color{9006, "color"};
        static constexpr PropertyId<bool> OwnBackground{9007, "ownBackground"};
        static constexpr PropertyId<NColor> Background{9008, "background"};
        static constexpr PropertyId<ResourceLink> Image{9009, "image"};
        static constexpr PropertyId<int> Look{27010, "look"};
    };

    static KindInfo Kind();

    /// The first of the node's states that the value matches; null without one.
    static const widgetState *Find(const ConfigNode &owner, const SignalValue &value);

    /// Numbers match from minimum to maximum, both included; texts match exactly when a match
    /// text is set. Bad values, errors and nothing received among them, match no state.
    bool Matches(const SignalValue &value) const;
    /// A value that matches: the text, or the least number.
    SignalValue GetSample() const;
    const std::string &GetText() const { return m_text; }
    bool HasTextColor() const { return m_hasTextColor; }
    bool HasBackgroundColor() const { return m_hasBackgroundColor; }
    NColor GetTextColor() const { return m_textColor; }
    NColor GetBackgroundColor() const { return m_backgroundColor; }
    /// For pictures of states; its path is empty when the state has none.
    const ResourceLink &GetImage() const { return m_image; }
    /// For symbols: how equipment looks in this state.
    SymbolLook GetLook() const { return SymbolLook(m_look); }

private:
    double m_minimum = 0;
    double m_maximum = 0;
    std::string m_matchText;
    std::string m_text;
    bool m_hasTextColor = false;
    NColor m_textColor{0, 0, 0};
    bool m_hasBackgroundColor = false;
    NColor m_backgroundColor{255, 255, 255};
    ResourceLink m_image;
    int m_look = int(SymbolLook::Plain);
};

} // namespace Nodes
