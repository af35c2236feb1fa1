#pragma once

#include "nodes/project/RecoveryWriter.h"
#include "nodes/values/Connection.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QSocketNotifier;

namespace Editor {

class ProjectSession;

/// Keeps unsaved work in a file of the user's own, so that whatever ends the program takes some
/// seconds of it at most. Writes in the background, some time after a change, and when the program
/// is ended from outside; the project's own file is never touched. The file goes when the work is
/// saved or given up. GUI thread.
class AutoSave : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultPeriod = 20000; // ms

    AutoSave(ProjectSession &session, QObject *parent);
    /// Keeps once more what nobody has saved or given up.
    ~AutoSave() override;

    const QString &directory() const { return m_directory; }
    /// Another one than the user's own; before a project is open.
    void setDirectory(const QString &directory) { m_directory = directory; }
    /// From a change to the write, ms.
    void setPeriod(int milliseconds) { m_period = milliseconds; }
    /// The open project came from that file, which is the one to replace from now on.
    void goOnWith(const QString &file) { m_file = file; }
    /// Of the unsaved work that is open; "" while there is none.
    const QString &file() const { return m_file; }
    /// Writes now, if anything is unsaved.
    void keep();
    /// The same, and waits until it is written: the program may be ended at any moment.
    void keepAtOnce();

signals:
    /// What is unsaved as of that moment is safe.
    void kept();
    /// It could not be kept; Russian. Told once, until it succeeds again.
    void failed(const QString &why);

private:
    void begin();
    void onModified(bool isModified);
    void onClosing();
    void touch();
    void finish();
    void drop();
    void onReplacing(const QString &digest);

    ProjectSession &m_session;
    QString m_directory;
    QString m_file;
    std::string m_base; // digest of the project's file
    int m_period = DefaultPeriod;
    QTimer m_timer;
    bool m_isFailing = false;
    bool m_isAbandoned = false; // the user does not want what is unsaved
    std::unique_ptr<Nodes::RecoveryWriter> m_writer;
    std::unique_ptr<QSocketNotifier> m_notifier;
    Nodes::ScopedConnection m_changes;
};

} // namespace Editor
