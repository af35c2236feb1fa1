#include "editor/recovery/ProjectCare.h"

#include "editor/project/ProjectSession.h"
#include "editor/recovery/AutoSave.h"
#include "editor/recovery/FileGuard.h"
#include "editor/recovery/HoldKeeper.h"
#include "editor/recovery/RecoveryOffer.h"
#include "editor/workspace/Workspace.h"

namespace Editor {

ProjectCare::ProjectCare(Workspace &workspace, QObject *parent)
    : QObject(parent),
      m_hold(new HoldKeeper(workspace, this)),
      m_autoSave(new AutoSave(workspace.session(), this)),
      m_offer(new RecoveryOffer(workspace, *m_autoSave, this)),
      m_fileGuard(new FileGuard(workspace, this))
{
    connect(m_autoSave, &AutoSave::failed, &workspace,
            [&workspace](const QString &why) { workspace.tell(Workspace::Warning, why); });
}

} // namespace Editor
