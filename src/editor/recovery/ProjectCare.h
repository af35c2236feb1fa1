#pragma once

#include <QObject>

namespace Editor {

class AutoSave;
class FileGuard;
class HoldKeeper;
class RecoveryOffer;
class Workspace;

/// What looks after the open project while it is edited: it is held for this user, its unsaved work
/// survives a crash, and changes of the file by others are noticed. GUI thread.
class ProjectCare : public QObject
{
    Q_OBJECT

public:
    ProjectCare(Workspace &workspace, QObject *parent);

    AutoSave &autoSave() const { return *m_autoSave; }
    FileGuard &fileGuard() const { return *m_fileGuard; }
    RecoveryOffer &offer() const { return *m_offer; }

private:
    HoldKeeper *m_hold; // the first that hears of a project: the others ask whether it is read only
    AutoSave *m_autoSave;
    RecoveryOffer *m_offer;
    FileGuard *m_fileGuard;
};

} // namespace Editor
