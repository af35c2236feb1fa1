#include "nodes/actions/kinds/actionArchiverDBMgr.h"

#include "nodes/model/KindBuilder.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/system/systemCore.h"

namespace Nodes {

KindInfo actionArchiverDBMgr::Kind()
{
    return KindBuilder::For<actionArchiverDBMgr>("actionArchiverDBMgr", "Manage archive files",
                                                 "Управление файлами архива");
}

Result actionArchiverDBMgr::Demand() const
{
    return DemandAccess(PrivilegeConfigure, *this, "управление файлами архива");
}

DatabaseFiles actionArchiverDBMgr::GetFiles() const
{
    const systemCore *core = GetCore();
    return DatabaseFiles(core ? core->GetDataDirectory() : std::string());
}

Result actionArchiverDBMgr::DeleteFile(const std::string &path) const
{
    if (const Result access = Demand(); !access)
        return access;
    const Result deleted = GetFiles().Delete(path);
    StoreMessage(deleted ? LevelAction : LevelWarning,
                 (deleted ? "Файл архива удалён: " : "Файл архива не удалён: ") + path +
                     (deleted ? std::string() : " — " + deleted.GetResultTranslated()),
                 GetNodeLink());
    return deleted;
}

void actionArchiverDBMgr::ReportCopy(const std::string &from, const std::string &to,
                                     const Result &result) const
{
    StoreMessage(result ? LevelAction : LevelWarning,
                 (result ? "Файл архива скопирован: " : "Файл архива не скопирован: ") + from +
                     " → " + to + (result ? std::string() : " — " + result.GetResultTranslated()),
                 GetNodeLink());
}

void actionArchiverDBMgr::CollectDemands(AccessDemands &demands) const
{
    demands.push_back({PrivilegeConfigure, GetNodeLink()});
}

} // namespace Nodes
