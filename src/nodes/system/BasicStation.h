#pragma once

#include "nodes/journal/JournalRetention.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/system/TreeAnswer.h"

namespace Nodes {

class systemAuthentication;

/// One computer of the plant: holds the subsystems and everything that runs there. What stands in
/// another station than the local one does not run here, and its signals are bad.
class NODES_EXPORT BasicStation : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::SubtypeStation;
    struct Prop
    {
        static constexpr PropertyId<int> JournalDays{1101, "journalDays"};
        static constexpr PropertyId<int> JournalMegabytes{1102, "journalMegabytes"};
        static constexpr PropertyId<std::string> JournalLocation{1103, "journalLocation"};
    };

    static KindInfo Kind();
    const BasicStation *AsStation() const override { return this; }

    /// User subsystem of this station, else the one of the whole project; null when the project
    /// configures none. Asked for every right: the tree is searched only after it has changed.
    systemAuthentication *GetSystemAuthentication() const;

    /// How long this station's journal keeps its entries; for ever by default.
    JournalRetention GetJournalRetention() const;
    /// As configured, with names to be expanded; "": a file in the data directory.
    const std::string &GetJournalLocation() const { return m_journalLocation; }

private:
    systemAuthentication *findAuthentication(const ConfigNode *root) const;

    TreeAnswer<systemAuthentication> m_authentication;
    int m_journalDays = 0;      // 0: for ever
    int m_journalMegabytes = 0; // 0: whatever the size
    std::string m_journalLocation;
};

} // namespace Nodes
