#pragma once

#include "nodes/model/NodeType.h"

#include <unordered_map>

namespace Nodes {
class BasicAction;
}

namespace Widgets {

class qBasicAction;

/// Which class runs which kind of action node. Read on any thread; filled once.
class ActionFactoryTable
{
public:
    using Creator = qBasicAction *(*)(Nodes::BasicAction *);

    static const ActionFactoryTable &instance();

    /// Action object on that node copy; null for kinds without an action class.
    qBasicAction *create(Nodes::BasicAction *copy) const;
    bool knows(Nodes::NodeType type) const { return m_creators.count(type.GetCode()) != 0; }

private:
    ActionFactoryTable();

    template <class Action> void add(unsigned subtypeCode)
    {
        m_creators[subtypeCode] = [](Nodes::BasicAction *copy) -> qBasicAction * {
            return new Action(copy);
        };
    }

    std::unordered_map<unsigned, Creator> m_creators;
};

} // namespace Widgets
