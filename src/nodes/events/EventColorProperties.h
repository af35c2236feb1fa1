#pragma once

#include "nodes/NodesExport.h"
#include "nodes/events/EventColors.h"
#include "nodes/model/properties/PropertyId.h"

namespace Nodes {

class BasicNode;
struct KindInfo;

/// The colours that a node has for the rows of its events. Nodes that keep the usual ones take no
/// memory for them.
class NODES_EXPORT EventColorProperties
{
public:
    struct Prop
    {
        static constexpr PropertyId<NColor> Background{12430, "eventBackground"};
        static constexpr PropertyId<NColor> Text{12431, "eventColor"};
    };

    /// Those of a node, whatever its kind; black on white unless something else was set. GUI
    /// thread.
    static const EventColors &Of(const BasicNode &node);
    /// Adds both properties to a kind whose nodes are sources of events.
    static void Describe(KindInfo &kind);

private:
    template <NColor EventColors::*Member> struct Binding;

    static EventColors &makeOwn(BasicNode &node);
};

} // namespace Nodes
