#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/KindInfo.h"

#include <deque>

namespace Nodes {

/// Registry of node kinds. Filled with the built-in kinds on first use; hosts may add theirs
/// before a project is loaded. Reading is safe on any thread, adding is not.
class NODES_EXPORT KindTable
{
public:
    static KindTable &Instance();

    /// Throws std::logic_error when the code, the key or a property repeats, or when a value id
    /// means something else in another kind: mistakes of the programmer that must not pass
    /// start-up.
    void Add(KindInfo kind);

    /// Null when the kind is not registered or the type names a family only.
    const KindInfo *Find(NodeType type) const;
    const KindInfo *FindByKey(std::string_view key) const;
    const std::deque<KindInfo> &GetKinds() const { return m_kinds; }

private:
    KindTable() = default;
    void checkValueIds(const KindInfo &kind) const;

    std::deque<KindInfo> m_kinds; // stable addresses: nodes point to their row
    std::unordered_map<unsigned, const KindInfo *> m_byCode;
    std::unordered_map<std::string_view, const KindInfo *> m_byKey;
    std::unordered_map<unsigned, const PropertyDescriptor *>
        m_byValueId; // of the first that has it
};

} // namespace Nodes
