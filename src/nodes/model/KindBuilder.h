#pragma once

#include "nodes/events/EventColorProperties.h"
#include "nodes/model/BasicNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/model/properties/PropertyText.h"

#include <memory>
#include <type_traits>

namespace Nodes {

namespace Detail {

template <class T> struct PropertyTypeOf;
template <> struct PropertyTypeOf<bool>
{
    static constexpr auto value = PropertyType::Bool;
};
template <> struct PropertyTypeOf<int>
{
    static constexpr auto value = PropertyType::Int;
};
template <> struct PropertyTypeOf<unsigned>
{
    static constexpr auto value = PropertyType::UInt;
};
template <> struct PropertyTypeOf<double>
{
    static constexpr auto value = PropertyType::Double;
};
template <> struct PropertyTypeOf<std::string>
{
    static constexpr auto value = PropertyType::String;
};
template <> struct PropertyTypeOf<NColor>
{
    static constexpr auto value = PropertyType::Color;
};
template <> struct PropertyTypeOf<NodeLink>
{
    static constexpr auto value = PropertyType::Link;
};
template <> struct PropertyTypeOf<NodeLinks>
{
    static constexpr auto value = PropertyType::Links;
};
template <> struct PropertyTypeOf<ResourceLink>
{
    static constexpr auto value = PropertyType::Resource;
};

template <class> struct MemberTraits;
template <class Class, class Value> struct MemberTraits<Value Class::*>
{
    using ClassType = Class;
    using ValueType = Value;
};

template <auto Member> struct Binding
{
    using Class = typename MemberTraits<decltype(Member)>::ClassType;
    using Value = typename MemberTraits<decltype(Member)>::ValueType;

    static const Value &of(const BasicNode &node)
    {
        return static_cast<const Class &>(node).*Member;
    }
    static Value &of(BasicNode &node) { return static_cast<Class &>(node).*Member; }

    static boost::any get(const BasicNode &node) { return of(node); }
    static bool set(BasicNode &node, const boost::any &value)
    {
        const Value *typed = boost::any_cast<Value>(&value);
        if (typed)
            of(node) = *typed;
        return typed != nullptr;
    }
    static std::string format(const PropertyDescriptor &d, const BasicNode &node)
    {
        return FormatProperty(d, of(node));
    }
    static bool parse(const PropertyDescriptor &d, BasicNode &node, std::string_view text)
    {
        return ParseProperty(d, text, node.GetNodesCollection(), of(node));
    }
    static bool equal(const BasicNode &left, const BasicNode &right)
    {
        return of(left) == of(right);
    }
    static void copy(const BasicNode &from, BasicNode &to) { of(to) = of(from); }
    static const void *data(const BasicNode &node) { return &of(node); }

    static constexpr PropertyBinding row{
        PropertyTypeOf<Value>::value, &get, &set, &format, &parse, &equal, &copy, &data};
};

} // namespace Detail

/// Builds one row of the kinds table. A node class declares its type code as `Code`, names its
/// properties in `struct Prop` (PropertyId) and builds the row in `static KindInfo Kind()`; when
/// others derive from it, `static void Describe(KindBuilder &)` adds its properties.
class KindBuilder
{
public:
    template <class Node>
    static KindBuilder For(const char *key, const char *nameEn, const char *nameRu)
    {
        KindBuilder builder;
        builder.m_kind.type = NodeType(Node::Code);
        builder.m_kind.key = key;
        builder.m_kind.nameEn = nameEn;
        builder.m_kind.nameRu = nameRu;
        builder.m_kind.create = []() -> std::unique_ptr<ConfigNode> {
            return std::make_unique<Node>();
        };
        builder.m_kind.prototype = std::make_unique<const Node>();
        return builder;
    }

    /// Adds the properties that a base class describes with `static void Describe(KindBuilder &)`.
    template <class Base> KindBuilder &Inherit()
    {
        Base::Describe(*this);
        return *this;
    }

    /// Adds a property of the member's type; the following modifiers apply to it.
    template <auto Member>
    KindBuilder &Property(const PropertyId<typename Detail::Binding<Member>::Value> &id,
                          const char *nameEn, const char *nameRu)
    {
        PropertyDescriptor &d = m_kind.properties.emplace_back();
        d.valueId = id.valueId;
        d.key = id.key;
        d.nameEn = nameEn;
        d.nameRu = nameRu;
        d.binding = Detail::Binding<Member>::row;
        return *this;
    }
    /// Adds one whose value is no member.
    KindBuilder &Property(PropertyDescriptor descriptor)
    {
        m_kind.properties.push_back(std::move(descriptor));
        return *this;
    }
    KindBuilder &Range(double minimum, double maximum)
    {
        last().minimum = minimum;
        last().maximum = maximum;
        last().hasRange = true;
        return *this;
    }
    KindBuilder &Choice(int code, const char *token, const char *nameRu)
    {
        last().choices.push_back({code, token, nameRu});
        return *this;
    }
    /// Families a link may refer to; validation reports others.
    KindBuilder &Refers(std::vector<unsigned> families)
    {
        last().linkFamilies = std::move(families);
        return *this;
    }
    KindBuilder &Acyclic()
    {
        last().isAcyclic = true;
        return *this;
    }
    KindBuilder &Secret()
    {
        last().binding.type = PropertyType::Secret;
        return *this;
    }
    KindBuilder &Hint(const char *word)
    {
        last().editorHint = word;
        return *this;
    }
    KindBuilder &Children(std::vector<NodeType> types)
    {
        m_kind.children.insert(m_kind.children.end(), types.begin(), types.end());
        return *this;
    }

    /// The row, with what the table gives to all kinds of its family.
    operator KindInfo()
    {
        EventColorProperties::Describe(m_kind);
        return std::move(m_kind);
    }

private:
    PropertyDescriptor &last() { return m_kind.properties.back(); }

    KindInfo m_kind;
};

} // namespace Nodes
