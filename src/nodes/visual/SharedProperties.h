#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"

#include <string>
#include <vector>

namespace Nodes {

class NodeLink;
class ResourceLink;

// Properties that several visual kinds have with one meaning. A kind's `struct Prop` derives from
// the groups it has.

struct SizeProp
{
    static constexpr PropertyId<int> Width{11003, "width"};
    static constexpr PropertyId<int> Height{11004, "height"};
};

struct GeometryProp : SizeProp
{
    static constexpr PropertyId<int> X{11001, "x"};
    static constexpr PropertyId<int> Y{11002, "y"};

    /// Whether that value id is one of the four.
    static constexpr bool Has(unsigned valueId)
    {
        return valueId == X || valueId == Y || valueId == Width || valueId == Height;
    }
};

/// Action lists of the pointer's gestures.
struct GestureProp
{
    static constexpr PropertyId<std::vector<NodeLink>> OnPress{12110, "onPress"};
    static constexpr PropertyId<std::vector<NodeLink>> OnRelease{12111, "onRelease"};
    static constexpr PropertyId<std::vector<NodeLink>> OnEnter{12112, "onEnter"};
    static constexpr PropertyId<std::vector<NodeLink>> OnMove{12113, "onMove"};
    static constexpr PropertyId<std::vector<NodeLink>> OnLeave{12114, "onLeave"};
};

struct BackgroundProp
{
    static constexpr PropertyId<NColor> Background{12231, "background"};
};

struct FrameProp : BackgroundProp
{
    static constexpr PropertyId<NColor> BorderColor{12232, "borderColor"};
    static constexpr PropertyId<int> BorderWidth{12233, "borderWidth"};
};

/// Font, alignment and colour of a text.
struct TextProp
{
    static constexpr PropertyId<std::string> FontFamily{12210, "fontFamily"};
    static constexpr PropertyId<int> FontSize{12211, "fontSize"};
    static constexpr PropertyId<bool> Bold{12212, "bold"};
    static constexpr PropertyId<bool> Italic{12213, "italic"};
    static constexpr PropertyId<bool> Underline{12214, "underline"};
    static constexpr PropertyId<bool> StrikeOut{12215, "strikeOut"};
    static constexpr PropertyId<int> Align{12220, "align"};
    static constexpr PropertyId<int> Valign{12221, "valign"};
    static constexpr PropertyId<NColor> Color{12230, "color"};
};

/// The words themselves, fixed and of a yes/no value.
struct CaptionProp
{
    static constexpr PropertyId<std::string> Text{12200, "text"};
    static constexpr PropertyId<std::string> OnText{12203, "onText"};
    static constexpr PropertyId<std::string> OffText{12204, "offText"};
};

struct AngleProp
{
    static constexpr PropertyId<double> Angle{12235, "angle"};
};

struct PictureProp
{
    static constexpr PropertyId<ResourceLink> Image{12250, "image"};
};

struct EditTimeoutProp
{
    static constexpr PropertyId<int> EditTimeout{12155, "editTimeout"};
};

/// Of templates: the title with its parameters in it.
struct TitleProp
{
    static constexpr PropertyId<std::string> Title{18030, "title"};
};

} // namespace Nodes
