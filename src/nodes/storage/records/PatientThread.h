#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace Nodes {

/// A thread whose end is waited for only so long: one that hangs in a call to a disk is left
/// behind. Start and Join belong to one thread, not the own one.
class PatientThread
{
public:
    PatientThread();
    ~PatientThread();
    PatientThread(const PatientThread &) = delete;
    PatientThread &operator=(const PatientThread &) = delete;

    /// `run` must keep alive what it needs. Only when none runs.
    void Start(std::function<void()> run);
    /// True when it has ended or never ran; false when it was left behind.
    bool Join(std::chrono::milliseconds patience);
    /// Also of one that was left behind. Any thread.
    bool IsRunning() const;
    bool IsOwn() const;

private:
    struct State;

    std::shared_ptr<State> m_state; // shared with the thread, which may outlive this object
    std::thread m_thread;
};

} // namespace Nodes
