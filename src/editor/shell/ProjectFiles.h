#pragma once

#include <QObject>
#include <QStringList>

namespace Nodes {
class Result;
struct RecoveryInfo;
} // namespace Nodes

namespace Editor {

class Workspace;

/// Making, opening and saving projects as the user asks for it: with the dialogs, the questions
/// about unsaved work, and the list of projects opened lately. GUI thread.
class ProjectFiles : public QObject
{
    Q_OBJECT

public:
    ProjectFiles(Workspace &workspace, QObject *parent);

    /// Each tells what went wrong itself; true when it is done.
    bool createByDialog();
    bool openByDialog();
    bool open(const QString &fileOrDirectory);
    /// The project that unsaved work is of; where it is gone, the work becomes a project in a
    /// directory that the user is asked for.
    bool openUnsaved(const Nodes::RecoveryInfo &info);
    bool save();
    bool saveAsByDialog();
    bool close();
    /// Asks what to do with unsaved work; false when the user wants to stay.
    bool mayLeave();

    /// Takes the directory out of the list of recent projects, nothing else.
    void forget(const QString &directory);

signals:
    void recentChanged();

private:
    void remember(const QString &directory);
    bool offerAnotherPlace(const Nodes::Result &why);
    void tellLateSave(const Nodes::Result &result);
    void fail(const QString &what, const Nodes::Result &why);
    void failToOpen(const QString &fileOrDirectory, const Nodes::Result &why);

    Workspace &m_workspace;
};

} // namespace Editor
