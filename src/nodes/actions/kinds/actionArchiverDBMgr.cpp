#include "nodes/actions/kinds/actionArchiverDBMgr.h"

#include "nodes/archive/DatabaseFilesOf.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/storage/DatabaseCopy.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

KindInfo actionArchiverDBMgr::Kind()
{
    return KindBuilder::For<actionArchiverDBMgr>("actionArchiverDBMgr", "Manage archive files",
                                                 "Управление файлами архива")
        .Property<&actionArchiverDBMgr::m_copyFolder>(Prop::CopyFolder, "Folder for copies",
                                                      "Папка для копий");
}

Result actionArchiverDBMgr::Demand() const
{
    return DemandAccess(PrivilegeConfigure, *this, "управление файлами архива");
}

NodesArray actionArchiverDBMgr::GetOwners() const
{
    const systemCore *core = GetCore();
    return core ? NodesWithDatabases(*core) : NodesArray();
}

Result actionArchiverDBMgr::DeleteFile(const NodeLink &owner, const std::string &path) const
{
    if (const Result access = Demand(); !access)
        return access;
    const Result deleted = DatabaseFilesOf(owner).Delete(path);
    StoreMessage(deleted ? LevelAction : LevelWarning,
                 (deleted ? "Файл архива удалён: " : "Файл архива не удалён: ") + path +
                     (deleted ? std::string() : " — " + deleted.GetResultTranslated()),
                 GetNodeLink());
    return deleted;
}

Result actionArchiverDBMgr::MakeCopy(const NodeLink &owner, const std::string &path,
                                     const std::string &target,
                                     std::unique_ptr<DatabaseCopy> &copy) const
{
    const Result access = Demand();
    return access ? DatabaseFilesOf(owner).MakeCopy(path, target, copy) : access;
}

void actionArchiverDBMgr::ReportCopy(const DatabaseCopy &copy, const Result &result) const
{
    const std::string proof = "; прочитано обратно, BLAKE2b " + copy.GetDigest();
    StoreMessage(result ? LevelAction : LevelWarning,
                 (result ? "Файл архива скопирован: " : "Файл архива не скопирован: ") +
                     copy.GetFrom() + " → " + copy.GetTo() +
                     (result ? proof : " — " + result.GetResultTranslated()),
                 GetNodeLink());
}

void actionArchiverDBMgr::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeConfigure, GetNodeLink()});
}

} // namespace Nodes
