#pragma once

#include "nodes/values/Result.h"

#include <QObject>

#include <functional>
#include <memory>

namespace Editor {

/// One job on a thread of its own, which a disk may hold for ever: so nothing waits for the thread,
/// not even the end of the program. GUI thread.
class DiskWork : public QObject
{
    Q_OBJECT

public:
    explicit DiskWork(QObject *parent) : QObject(parent) {}
    /// What has not ended by now goes on, and nobody hears of it.
    ~DiskWork() override;

    /// Once. The job owns all that it uses.
    void start(std::function<Nodes::Result()> job);
    bool isDone() const { return m_isDone; }
    const Nodes::Result &result() const { return m_result; }

signals:
    void finished();

private:
    struct Shared;

    void finish(const Nodes::Result &result);

    std::shared_ptr<Shared> m_shared;
    Nodes::Result m_result;
    bool m_isDone = false;
};

} // namespace Editor
