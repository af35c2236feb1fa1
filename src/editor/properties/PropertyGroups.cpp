#include "editor/properties/PropertyGroups.h"

#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/events/EventColorProperties.h"
#include "nodes/model/KindInfo.h"
#include "nodes/texts/TextLanguage.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/elements/widgetEditBox.h"

#include <algorithm>

namespace Editor {

namespace {

using Descriptor = Nodes::PropertyDescriptor;
using Kind = Nodes::KindInfo;
using Nodes::NodeType;
using Nodes::PropertyType;

bool refersTo(const Descriptor &d, std::initializer_list<unsigned> families)
{
    return std::any_of(d.linkFamilies.begin(), d.linkFamilies.end(), [&](unsigned family) {
        return std::find(families.begin(), families.end(), family) != families.end();
    });
}

bool isVisual(const Kind &kind)
{
    switch (kind.type.GetFamily()) {
    case NodeType::TypeFrame:
    case NodeType::TypeWindow:
    case NodeType::TypeComposition:
    case NodeType::TypeLayer:
    case NodeType::TypeWidget:
    case NodeType::TypeState:
    case NodeType::TypeChartItem:
    case NodeType::TypeChartAxis:
        return true;
    default:
        return false;
    }
}

bool isPlace(const Kind &, const Descriptor &d)
{
    return Nodes::GeometryProp::Has(d.valueId) || d.valueId == Nodes::BasicWidget::Prop::ZOrder ||
           d.editorHint == "angle";
}

bool isAction(const Kind &, const Descriptor &d)
{
    return refersTo(d, {NodeType::TypeAction, NodeType::TypeArchiverAction});
}

bool isData(const Kind &kind, const Descriptor &d)
{
    const Nodes::TextLanguage *language = Nodes::FindTextLanguage(d.editorHint);
    if (language && language->form == Nodes::TextLanguage::Lua)
        return true;
    const bool isLink = d.binding.type == PropertyType::Link;
    return (isLink || d.binding.type == PropertyType::Links) && !isAction(kind, d);
}

bool isOfEvents(const Kind &, const Descriptor &d)
{
    using Prop = Nodes::EventColorProperties::Prop;
    return d.valueId == Prop::Background.valueId || d.valueId == Prop::Text.valueId;
}

// Ids 12200 to 12299 are what elements look like.
bool isLook(const Kind &kind, const Descriptor &d)
{
    const bool isOfElement = d.valueId >= 12200 && d.valueId < 12300;
    if (isOfEvents(kind, d))
        return false;
    return d.binding.type == PropertyType::Color || fontOf(d.valueId) != nullptr ||
           (isVisual(kind) && (isOfElement || d.binding.type == PropertyType::Resource));
}

bool isBehaviour(const Kind &kind, const Descriptor &d)
{
    return isVisual(kind) && !isAction(kind, d) && !isOfEvents(kind, d);
}

bool isParameter(const Kind &kind, const Descriptor &d)
{
    return !isAction(kind, d) && !isOfEvents(kind, d);
}

} // namespace

const std::vector<PropertyGroup> &propertyGroups()
{
    static const std::vector<PropertyGroup> groups{{"place", "Положение", &isPlace},
                                                   {"data", "Данные", &isData},
                                                   {"look", "Вид", &isLook},
                                                   {"behaviour", "Поведение", &isBehaviour},
                                                   {"parameters", "Параметры", &isParameter},
                                                   {"actions", "Действия", &isAction},
                                                   {"events", "Список событий", &isOfEvents}};
    return groups;
}

const PropertyGroup &groupOf(const Kind &kind, const Descriptor &descriptor)
{
    const auto &groups = propertyGroups();
    return *std::find_if(groups.begin(), groups.end() - 1,
                         [&](const PropertyGroup &group) { return group.has(kind, descriptor); });
}

std::vector<unsigned> FontProperties::all() const
{
    std::vector<unsigned> ids{family, size, bold, italic, underline, strikeOut};
    ids.erase(std::remove(ids.begin(), ids.end(), 0u), ids.end());
    return ids;
}

const std::vector<FontProperties> &fontProperties()
{
    using Text = Nodes::TextProp;
    using Write = Nodes::widgetEditBox::Prop;
    using Menu = Nodes::actionShowMenu::Prop;
    using Alarms = Nodes::systemAlarming::Prop;
    static const std::vector<FontProperties> fonts{
        {"Шрифт", Text::FontFamily, Text::FontSize, Text::Bold, Text::Italic, Text::Underline,
         Text::StrikeOut},
        {"Шрифт ввода", Write::WriteFontFamily, Write::WriteFontSize, Write::WriteBold,
         Write::WriteItalic, 0, 0},
        {"Шрифт", Menu::FontFamily, Menu::FontSize, Menu::Bold, 0, 0, 0},
        {"Шрифт", Alarms::FontFamily, Alarms::FontSize, 0, 0, 0, 0}};
    return fonts;
}

const FontProperties *fontOf(unsigned valueId)
{
    for (const FontProperties &font : fontProperties()) {
        const std::vector<unsigned> ids = font.all();
        if (std::find(ids.begin(), ids.end(), valueId) != ids.end())
            return &font;
    }
    return nullptr;
}

} // namespace Editor
