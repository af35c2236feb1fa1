#include "nodes/events/EventColorProperties.h"

#include "nodes/model/BasicNodeRare.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyText.h"

#include <algorithm>
#include <array>

namespace Nodes {

namespace {

// Families, and kinds of families that are no sources otherwise.
constexpr std::array sources{
    NodeType(NodeType::TypeSystem),    NodeType(NodeType::TypeFolder),
    NodeType(NodeType::TypeDriver),    NodeType(NodeType::TypeDriverGroup),
    NodeType(NodeType::TypeSignal),    NodeType(NodeType::TypeSecurity),
    NodeType(NodeType::TypeSubsystem), NodeType(NodeType::TypeAlarm),
    NodeType(NodeType::TypeTimer),     NodeType(NodeType::TypeAction),
    NodeType(NodeType::TypeArchive),   NodeType(NodeType::TypeArchiverAction),
    NodeType(NodeType::SubtypeReport), NodeType(NodeType::SubtypeReportSchedule),
};

// Of these families, but never in the journal.
constexpr std::array others{NodeType(NodeType::SubtypeUnknown),
                            NodeType(NodeType::SubtypeTemplateParameter)};

bool isSource(NodeType type)
{
    const auto covers = [type](NodeType row) {
        return row == type ||
               (row.GetSubtype() == NodeType::SubtypeNone && row.GetFamily() == type.GetFamily());
    };
    return std::any_of(sources.begin(), sources.end(), covers) &&
           std::none_of(others.begin(), others.end(), covers);
}

} // namespace

template <NColor EventColors::*Member> struct EventColorProperties::Binding
{
    static const NColor &of(const BasicNode &node) { return Of(node).*Member; }
    static void take(BasicNode &node, const NColor &color)
    {
        if (color != of(node))
            makeOwn(node).*Member = color;
    }

    static boost::any get(const BasicNode &node) { return of(node); }
    static bool set(BasicNode &node, const boost::any &value)
    {
        const auto *color = boost::any_cast<NColor>(&value);
        if (color)
            take(node, *color);
        return color != nullptr;
    }
    static std::string format(const PropertyDescriptor &d, const BasicNode &node)
    {
        return FormatProperty(d, of(node));
    }
    static bool parse(const PropertyDescriptor &d, BasicNode &node, std::string_view text)
    {
        NColor color;
        const bool isRead = ParseProperty(d, text, nullptr, color);
        if (isRead)
            take(node, color);
        return isRead;
    }
    static bool equal(const BasicNode &left, const BasicNode &right)
    {
        return of(left) == of(right);
    }
    static void copy(const BasicNode &from, BasicNode &to) { take(to, of(from)); }
    static const void *data(const BasicNode &node) { return &of(node); }

    static PropertyDescriptor row(const PropertyId<NColor> &id, const char *nameEn,
                                  const char *nameRu)
    {
        PropertyDescriptor d;
        d.valueId = id.valueId;
        d.key = id.key;
        d.nameEn = nameEn;
        d.nameRu = nameRu;
        d.binding = {PropertyType::Color, &get, &set, &format, &parse, &equal, &copy, &data};
        return d;
    }
};

EventColors &EventColorProperties::makeOwn(BasicNode &node)
{
    auto &own = node.rare().eventColors;
    if (!own)
        own = std::make_unique<EventColors>();
    return *own;
}

const EventColors &EventColorProperties::Of(const BasicNode &node)
{
    static const EventColors usual;
    const bool isOwn = node.m_rare && node.m_rare->eventColors;
    return isOwn ? *node.m_rare->eventColors : usual;
}

void EventColorProperties::Describe(KindInfo &kind)
{
    if (!isSource(kind.type))
        return;
    kind.properties.push_back(Binding<&EventColors::background>::row(
        Prop::Background, "Background in event lists", "Фон в списке событий"));
    kind.properties.push_back(Binding<&EventColors::text>::row(Prop::Text, "Text in event lists",
                                                               "Цвет текста в списке событий"));
}

} // namespace Nodes
