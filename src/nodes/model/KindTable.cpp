#include "nodes/model/KindTable.h"

#include <stdexcept>

namespace Nodes {

namespace {

struct Providers
{
    std::vector<KindTable::Provider> all;
    bool isAsked = false; // the table is in use
};

Providers &providers()
{
    static auto *instance = new Providers;
    return *instance;
}

} // namespace

KindTable &KindTable::Instance()
{
    static KindTable *table = [] {
        auto *fresh = new KindTable;
        providers().isAsked = true;
        for (const Provider provider : providers().all)
            provider(*fresh);
        return fresh;
    }();
    return *table;
}

void KindTable::Provide(Provider provider)
{
    providers().all.push_back(provider);
    if (providers().isAsked)
        provider(Instance());
}

// A selection of several kinds is edited by value id: one id means the same thing everywhere.
void KindTable::checkValueIds(const KindInfo &kind) const
{
    for (const PropertyDescriptor &property : kind.properties) {
        const auto known = m_byValueId.find(property.valueId);
        if (known == m_byValueId.end() || known->second->IsSameAs(property))
            continue;
        throw std::logic_error("kind " + kind.key + ": value id " +
                               std::to_string(property.valueId) + " of " + property.key +
                               " means " + known->second->key + " elsewhere");
    }
}

void KindTable::Add(KindInfo kind)
{
    kind.Prepare();
    if (Find(kind.type) || FindByKey(kind.key))
        throw std::logic_error("node kind registered twice: " + kind.key);
    checkValueIds(kind);
    const KindInfo &stored = m_kinds.emplace_back(std::move(kind));
    m_byCode.emplace(stored.type.GetSubtype(), &stored);
    m_byKey.emplace(stored.key, &stored);
    for (const PropertyDescriptor &property : stored.properties)
        m_byValueId.emplace(property.valueId, &property);
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
