#include "nodes/model/KindTable.h"

#include "nodes/kinds/BuiltInKinds.h"

#include <stdexcept>

namespace Nodes {

KindTable &KindTable::Instance()
{
    static KindTable *table = [] {
        auto *fresh = new KindTable;
        AddBuiltInKinds(*fresh);
        return fresh;
    }();
    return *table;
}

void KindTable::Add(KindInfo kind)
{
    kind.Prepare();
    if (Find(kind.type) || FindByKey(kind.key))
        throw std::logic_error("node kind registered twice: " + kind.key);
    const KindInfo &stored = m_kinds.emplace_back(std::move(kind));
    m_byCode.emplace(stored.type.GetSubtype(), &stored);
    m_byKey.emplace(stored.key, &stored);
}

const KindInfo *KindTable::Find(NodeType type) const
{
    const auto found = m_byCode.find(type.GetSubtype());
    return found == m_byCode.end() ? nullptr : found->second;
}

const KindInfo *KindTable::FindByKey(std::string_view key) const
{
    const auto found = m_byKey.find(key);
    return found == m_byKey.end() ? nullptr : found->second;
}

} // namespace Nodes
