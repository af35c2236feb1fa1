#pragma once

#include "nodes/NodesExport.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/validation/ProjectFinding.h"
#include "nodes/model/validation/TextProblem.h"

#include <deque>

namespace Nodes {

/// Registry of node kinds. The table itself knows none: libraries provide theirs, hosts may add
/// more before a project is loaded. Reading is safe on any thread, adding is not.
class NODES_EXPORT KindTable
{
public:
    /// Filled on first use by those who have called Provide by then.
    static KindTable &Instance();

    /// `provider` adds the kinds of a library: when the table is first used, or at once when it is
    /// in use already. Safe while static objects are being made, in any order of files.
    using Provider = void (*)(KindTable &);
    static void Provide(Provider provider);

    /// Throws std::logic_error when the code, the key or a property repeats, or when a value id
    /// means something else in another kind: mistakes of the programmer that must not pass
    /// start-up.
    void Add(KindInfo kind);

    /// Null when the kind is not registered or the type names a family only.
    const KindInfo *Find(NodeType type) const;
    const KindInfo *FindByKey(std::string_view key) const;
    const std::deque<KindInfo> &GetKinds() const { return m_kinds; }

    /// What the readers of projects look for in each project they have read.
    using ProjectCheck = std::vector<ProjectFinding> (*)(const NodesCollection &);
    void AddCheck(ProjectCheck check) { m_checks.push_back(check); }
    const std::vector<ProjectCheck> &GetChecks() const { return m_checks; }

    /// What is wrong with the text of a property that has `hint`, at that node, which may be null.
    using TextCheck = std::vector<TextProblem> (*)(std::string_view hint, const std::string &text,
                                                   const ConfigNode *node);
    void SetTextCheck(TextCheck check) { m_textCheck = check; }
    /// Null: nobody knows how such texts are written.
    TextCheck GetTextCheck() const { return m_textCheck; }

private:
    KindTable() = default;
    void checkValueIds(const KindInfo &kind) const;

    std::vector<ProjectCheck> m_checks;
    TextCheck m_textCheck = nullptr;
    std::deque<KindInfo> m_kinds; // stable addresses: nodes point to their row
    std::unordered_map<unsigned, const KindInfo *> m_byCode;
    std::unordered_map<std::string_view, const KindInfo *> m_byKey;
    std::unordered_map<unsigned, const PropertyDescriptor *>
        m_byValueId; // of the first that has it
};

} // namespace Nodes
