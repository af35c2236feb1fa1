#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/visual/SharedProperties.h"

#include <QRect>

#include <array>
#include <cstddef>

class IWidget;

namespace Nodes {
class BasicProperty;
class BasicWidget;
} // namespace Nodes

namespace Widgets {

/// What remains to be done when a property was taken over, in rising order: nothing; paint the
/// element; show its value anew and paint it.
enum class Then { Nothing, Repaint, Value };

/// One row of an element's bindings: the properties, by value id, and what each change of one of
/// them does.
class WIDGETS_EXPORT PropertyRow
{
public:
    /// `Member` is a function of the element that takes a `const Node &`: the node class shown or
    /// a base of it. It reads what it needs of the node, never the change alone: rows with several
    /// properties are run once for all of them.
    template <auto Member, class... Ids> static constexpr PropertyRow takes(Then then, Ids... ids)
    {
        return PropertyRow(&call<Member>, then, {unsigned(ids)...});
    }
    /// Properties that are read when they are needed: nothing is taken over.
    template <class... Ids> static constexpr PropertyRow only(Then then, Ids... ids)
    {
        return PropertyRow(nullptr, then, {unsigned(ids)...});
    }

    /// The place of the whole element, which is a QWidget.
    template <class Element> static constexpr PropertyRow geometry(Then then)
    {
        using Prop = Nodes::GeometryProp;
        return PropertyRow(&place<Element>, then, {Prop::X, Prop::Y, Prop::Width, Prop::Height});
    }

    constexpr bool has(unsigned valueId) const
    {
        for (const unsigned id : m_properties) {
            if (id == valueId)
                return true;
        }
        return false;
    }
    constexpr Then then() const { return m_then; }
    void take(IWidget &element, const Nodes::BasicWidget &node) const
    {
        if (m_take)
            m_take(element, node);
    }

private:
    static constexpr std::size_t most = 16; // properties a row; those left over are 0
    using Take = void (*)(IWidget &, const Nodes::BasicWidget &);

    constexpr PropertyRow(Take function, Then next, std::array<unsigned, most> properties)
        : m_take(function), m_then(next), m_properties(properties)
    {
    }

    template <class Element, class Node>
    static void callMember(void (Element::*member)(const Node &), IWidget &element,
                           const Nodes::BasicWidget &node)
    {
        (static_cast<Element &>(element).*member)(static_cast<const Node &>(node));
    }
    template <auto Member> static void call(IWidget &element, const Nodes::BasicWidget &node)
    {
        callMember(Member, element, node);
    }

    static QRect placeOf(const Nodes::BasicWidget &node);
    template <class Element> static void place(IWidget &element, const Nodes::BasicWidget &node)
    {
        static_cast<Element &>(element).setGeometry(placeOf(node));
    }

    Take m_take;
    Then m_then;
    std::array<unsigned, most> m_properties;
};

/// Which property of its node does what to an element: declared once a class, behind those of its
/// base. First construction, refresh of one property and refresh of all follow from it.
class WIDGETS_EXPORT PropertyBindings
{
public:
    /// Both outlive the bindings.
    template <std::size_t count>
    constexpr explicit PropertyBindings(const PropertyRow (&rows)[count],
                                        const PropertyBindings *base = &ofEveryElement)
        : m_base(base), m_rows(rows), m_count(count)
    {
    }

    /// What the host deals with and what is read when it is needed.
    static const PropertyBindings ofEveryElement;

    /// Whether it is said somewhere what a change of that property does.
    bool has(unsigned valueId) const;
    /// Runs the rows of the property in their order, all of them for null and for a property that
    /// no row has. The node is of the class shown.
    Then take(IWidget &element, const Nodes::BasicWidget &node,
              const Nodes::BasicProperty *property) const;

private:
    Then takeRows(IWidget &element, const Nodes::BasicWidget &node, unsigned valueId) const;

    const PropertyBindings *m_base;
    const PropertyRow *m_rows;
    std::size_t m_count;
};

} // namespace Widgets
