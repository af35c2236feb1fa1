#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/storage/DatabaseFiles.h"

namespace Nodes {

/// Opens the manager of the station's database files, and is what the manager works through: every
/// copy and deletion needs PrivilegeConfigure for this node and is journalled with the user.
class NODES_EXPORT actionArchiverDBMgr : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x106001);

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    /// AccessDenied (journalled) without the right to manage files.
    [[nodiscard]] Result Demand() const;
    /// Files below the station's data directory; none without a core. Any thread.
    DatabaseFiles GetFiles() const;
    /// Deletes a listed file; a file in use is Refused.
    [[nodiscard]] Result DeleteFile(const std::string &path) const;
    /// Journals how a copy that Demand allowed has ended.
    void ReportCopy(const std::string &from, const std::string &to, const Result &result) const;
};

} // namespace Nodes
