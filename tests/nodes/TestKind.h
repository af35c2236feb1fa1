#pragma once

#include "nodes/model/KindBuilder.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/links/ResourceLink.h"

/// A kind of a host's own, with what no built-in kind has together: acyclic links, links to one
/// family only and a resource.
class TestKind : public Nodes::ConfigNode
{
public:
    static constexpr auto Code = Nodes::NodeType::enNodeSubtype(0x2FF0);

    static void Register()
    {
        Nodes::KindTable::Instance().Add(
            Nodes::KindBuilder::For<TestKind>("pipe", "Pipe", "Труба")
                .Property<&TestKind::m_next>({1, "next"}, "Next", "Далее")
                .Acyclic()
                .Property<&TestKind::m_signal>({2, "signal"}, "Signal", "Сигнал")
                .Refers({Nodes::NodeType::TypeSignal})
                .Property<&TestKind::m_picture>({3, "picture"}, "Picture", "Рисунок")
                .Property<&TestKind::m_count>({4, "count"}, "Count", "Количество")
                .Range(1, 9)
                .Property<&TestKind::m_secret>({5, "secret"}, "Secret", "Секрет")
                .Secret()
                .Children({Nodes::NodeType::TypeFolder}));
    }

private:
    Nodes::NodeLinks m_next;
    Nodes::NodeLink m_signal;
    Nodes::ResourceLink m_picture;
    unsigned m_count = 3;
    std::string m_secret;
};
