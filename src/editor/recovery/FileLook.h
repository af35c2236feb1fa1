#pragma once

#include "nodes/project/FileStamp.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace Editor {

/// Looks at a file from a thread of its own, so that the window waits for no disk, however slow or
/// far away. One look at a time; what a disk answers after this object has gone is dropped. GUI
/// thread.
class FileLook : public QObject
{
    Q_OBJECT

public:
    explicit FileLook(QObject *parent);
    ~FileLook() override;

    /// How long the disk may take to answer, ms.
    void setPatience(int milliseconds) { m_patience.setInterval(milliseconds); }
    bool isRunning() const { return m_job != nullptr; }
    /// The disk has not answered for some seconds.
    bool isStuck() const { return m_isStuck; }
    /// Compares the file with what it was like; nothing while a look is under way.
    void start(const QString &file, const Nodes::FileStamp &known);
    /// What a look that is under way finds is not wanted any more, nor that its disk was mute.
    void forget();

signals:
    /// `now` is the file as it was found.
    void found(Nodes::FileStamp::enState state, const Nodes::FileStamp &now);
    void stuck();

private:
    struct Job;

    void finish(const std::shared_ptr<Job> &job);

    std::shared_ptr<Job> m_job; // shared with its thread, which a disk may hold
    QTimer m_patience;
    bool m_isStuck = false;
};

} // namespace Editor
