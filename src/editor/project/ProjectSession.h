#pragma once

#include "nodes/project/FileStamp.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <QObject>
#include <QString>
#include <QUndoStack>

#include <memory>

namespace Nodes {
class ConfigNode;
class NodesCollection;
class systemCore;
} // namespace Nodes

namespace Widgets {
class ProcessContext;
class UnheardActions;
} // namespace Widgets

namespace Editor {

struct ReadProject;

/// The project being edited: its tree in a core that edits and never runs, its file, and the one
/// history of edits that scenes, tree and property table share. Users and rights of the project do
/// not bind whoever edits it. One a process. GUI thread.
class ProjectSession : public QObject
{
    Q_OBJECT

public:
    explicit ProjectSession(QObject *parent = nullptr);
    ~ProjectSession() override;

    Nodes::systemCore &core() { return *m_core; }
    /// Null while none is open.
    Nodes::NodesCollection *project() const;
    Nodes::ConfigNode *root() const;
    bool isOpen() const { return m_isOpen; }
    /// Absolute; "" for a project that has no file yet.
    const QString &file() const { return m_file; }
    /// Of the file: resources are relative to it.
    QString directory() const;
    /// Name of the project's root.
    QString name() const;
    /// Of the file as it was read or written last.
    const Nodes::FileStamp &stamp() const { return m_stamp; }
    /// Findings of the last load.
    const Nodes::LoadReport &report() const;

    bool isReadOnly() const { return !m_readOnlyReason.isEmpty(); }
    /// Russian; "" while it can be edited.
    const QString &readOnlyReason() const { return m_readOnlyReason; }
    /// From now on commands are dropped and saving over the file is refused; "" allows both again.
    void setReadOnly(const QString &reason);
    /// Differs from what was last saved.
    bool isModified() const { return m_isOpen && (!m_stack.isClean() || m_isRecovered); }
    /// The tree is what a crash left behind and differs from the file, though no command did it.
    void setRecovered();
    QUndoStack &undoStack() { return m_stack; }

    /// Opens "project.xml" of a directory, or a file. On failure the project that is open stays.
    [[nodiscard]] Nodes::Result open(const QString &fileOrDirectory);
    /// Takes over a project that was read elsewhere; `file` is where it is saved to, which was as
    /// `stamp` says when it was read.
    void adopt(std::unique_ptr<Nodes::NodesCollection> project, const QString &file,
               const Nodes::LoadReport &report, const Nodes::FileStamp &stamp = {},
               const QString &readOnlyReason = {});
    void adopt(ReadProject &&read, const QString &file);
    /// Makes a new project in a directory, made when it is missing, and saves it. Duplicate when
    /// the directory has a project already.
    [[nodiscard]] Nodes::Result create(const QString &directory, const QString &name);
    /// ReadOnly for a project that may only be looked at; the file is replaced as a whole.
    [[nodiscard]] Nodes::Result save();
    /// Saves into another directory, copies the resources there, and goes on with that one, with a
    /// history of its own. Duplicate when a project lies there.
    [[nodiscard]] Nodes::Result saveAs(const QString &directory);
    /// The user has decided against what is unsaved, which stays until the project is closed.
    void abandon() { emit abandoned(); }
    void close();

    /// Of a project that is named by its directory or its file; absolute.
    static QString fileOf(const QString &fileOrDirectory);
    /// Russian: what could not be done, why and what to do.
    static QString explain(const QString &what, const Nodes::Result &why);

signals:
    /// Another project is open; comes after closed() of the one before.
    void opened();
    /// All that shows the project lets go of it now.
    void aboutToClose();
    void closed();
    /// Asked before a file is replaced; a slot that sets `why` to a failure keeps it from being so.
    void aboutToSave(Nodes::Result &why);
    /// The file is replaced now by one of that HexDigest.
    void replacing(const QString &digest);
    void saved();
    void abandoned();
    void modifiedChanged(bool isModified);
    void readOnlyChanged();
    /// A command was refused, or anything else that the user should read; Russian.
    void refused(const QString &text);

private:
    bool admits();
    Nodes::Result write();
    void tellModified();

    std::unique_ptr<Nodes::systemCore> m_core;
    std::unique_ptr<Widgets::UnheardActions> m_actions;
    QObject m_gestures;
    std::unique_ptr<Widgets::ProcessContext> m_context;
    QUndoStack m_stack;
    QString m_file;
    Nodes::FileStamp m_stamp;
    QString m_readOnlyReason;
    bool m_isOpen = false;
    bool m_isRecovered = false;
    bool m_wasModified = false;
};

} // namespace Editor
