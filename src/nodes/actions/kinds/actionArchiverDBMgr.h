#pragma once

#include "nodes/actions/BasicAction.h"
#include "nodes/model/NodesArray.h"
#include "nodes/model/properties/PropertyId.h"

#include <memory>

namespace Nodes {

class DatabaseCopy;

/// Opens the manager of the station's database files, and is what the manager works through: every
/// copy and deletion needs PrivilegeConfigure for this node and is journalled with the user.
class NODES_EXPORT actionArchiverDBMgr : public BasicAction
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x106001);
    struct Prop
    {
        static constexpr PropertyId<std::string> CopyFolder{26201, "copyFolder"};
    };

    static KindInfo Kind();
    void CollectDemands(AccessDemands &demands) const override;

    /// AccessDenied (journalled) without the right to manage files.
    [[nodiscard]] Result Demand() const;
    /// Where copies go unless the operator chooses; "": nowhere.
    const std::string &GetCopyFolder() const { return m_copyFolder; }
    /// See NodesWithDatabases; none without a core. GUI thread.
    NodesArray GetOwners() const;
    /// Deletes a file of that node, see DatabaseFilesOf; a file in use is Refused.
    [[nodiscard]] Result DeleteFile(const NodeLink &owner, const std::string &path) const;
    /// A copy that is allowed and to be run, on another thread.
    [[nodiscard]] Result MakeCopy(const NodeLink &owner, const std::string &path,
                                  const std::string &target,
                                  std::unique_ptr<DatabaseCopy> &copy) const;
    /// Journals how such a copy has ended.
    void ReportCopy(const DatabaseCopy &copy, const Result &result) const;

private:
    std::string m_copyFolder;
};

} // namespace Nodes
