#pragma once

#include "editor/project/DiskJob.h"

#include "nodes/project/FileStamp.h"
#include "nodes/serial/LoadReport.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"

#include <QObject>
#include <QString>
#include <QUndoStack>

#include <memory>
#include <optional>
#include <set>

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

    /// Another way to do what a disk may hold up than to stand still until it is done.
    void setDiskRunner(DiskRunner runner) { m_runner = std::move(runner); }
    /// Does it that way; NotAvailable when nobody waits for it any more.
    [[nodiscard]] Nodes::Result onDisk(const DiskJob &job) const;
    /// Somebody waits for a disk now, in an event loop of his own.
    bool isOnDisk() const { return m_waits > 0; }
    /// A save of the open project's file that nobody waits for has not ended yet.
    bool isWriting() const { return m_writing.count(m_file) != 0; }

    /// Opens "project.xml" of a directory, or a file. On failure the project that is open stays.
    /// Cancelled when the user did not want to wait.
    [[nodiscard]] Nodes::Result open(const QString &fileOrDirectory);
    /// Reads a project that is not opened; `file` becomes its file unless it is null.
    [[nodiscard]] Nodes::Result read(const QString &fileOrDirectory, ReadProject &found,
                                     QString *file = nullptr) const;
    /// Takes over a project that was read elsewhere; `file` is where it is saved to, which was as
    /// `stamp` says when it was read.
    void adopt(std::unique_ptr<Nodes::NodesCollection> project, const QString &file,
               const Nodes::LoadReport &report, const Nodes::FileStamp &stamp = {},
               const QString &readOnlyReason = {});
    void adopt(ReadProject &&read, const QString &file);
    /// Makes a new project in a directory, made when it is missing, and saves it. Duplicate when
    /// the directory has a project already.
    [[nodiscard]] Nodes::Result create(const QString &directory, const QString &name);
    /// ReadOnly for a project that may only be looked at; the file is replaced as a whole. What is
    /// written is the project of this moment. NotAvailable when that is not waited for, or an
    /// earlier save has not ended yet: savedLate() tells what came of it.
    [[nodiscard]] Nodes::Result save();
    /// Saves into another directory, copies the resources there, and goes on with that one, with a
    /// history of its own. Duplicate when a project lies there; NotAvailable as for save();
    /// Cancelled when it is saved, and the user did not wait for it to be read.
    [[nodiscard]] Nodes::Result saveAs(const QString &directory);
    /// The user has decided against what is unsaved, which stays until the project is closed.
    void abandon() { emit abandoned(); }
    /// He has stayed after all: what is unsaved is work again.
    void keepOn() { emit keptOn(); }
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
    /// A save that nobody waited for has ended; saved() came before, if it did.
    void savedLate(const Nodes::Result &result);
    void abandoned();
    void keptOn();
    void modifiedChanged(bool isModified);
    void readOnlyChanged();
    /// A command was refused, or anything else that the user should read; Russian.
    void refused(const QString &text);

private:
    bool admits();
    std::optional<Nodes::Result> wait(const DiskJob &job) const;
    Nodes::Result write();
    /// What is saved, and of which project.
    struct Writing
    {
        QString file;
        QString digest;
        unsigned opening;
        unsigned edits;
    };
    void endWrite(const Writing &writing, const Nodes::Result &written);
    void tellModified();

    std::unique_ptr<Nodes::systemCore> m_core;
    std::unique_ptr<Widgets::UnheardActions> m_actions;
    QObject m_gestures;
    std::unique_ptr<Widgets::ProcessContext> m_context;
    QUndoStack m_stack;
    QString m_file;
    Nodes::FileStamp m_stamp;
    QString m_readOnlyReason;
    DiskRunner m_runner;
    mutable int m_waits = 0;
    std::set<QString> m_writing; ///< files
    unsigned m_openings = 0;     ///< counts projects: the same file may be opened again
    unsigned m_edits = 0;        ///< counts what has changed the tree
    bool m_isOpen = false;
    bool m_isRecovered = false;
    bool m_wasModified = false;
};

} // namespace Editor
