#pragma once

#include "utils/UtilsExport.h"

#include <QBasicTimer>
#include <QObject>

#include <deque>
#include <memory>
#include <mutex>
#include <vector>

namespace Utils {

class RelayTarget;

/// Calls relay targets on the GUI thread: one posted event for however many wait, and after each
/// round a pause as long as the round, so that a flood of values never starves painting and input.
/// Bounded by the number of targets. Lives as long as the process.
class UTILS_EXPORT RelayDispatcher : public QObject
{
    Q_OBJECT

public:
    /// The first call decides which thread is the GUI thread.
    static RelayDispatcher &instance();

    /// Any thread.
    void post(std::shared_ptr<RelayTarget> target);
    /// Targets that wait for their call. GUI thread.
    int waiting() const;
    /// True on the thread that targets are called on.
    bool isOwnThread() const;

protected:
    bool event(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    RelayDispatcher();
    void deliverRound();

    mutable std::mutex m_mutex;
    std::vector<std::shared_ptr<RelayTarget>> m_waiting; // guarded
    bool m_isAwake = false;                              // guarded; a wake-up or a pause is pending
    std::deque<std::shared_ptr<RelayTarget>> m_round;    // GUI thread; being delivered
    QBasicTimer m_pause;
    int m_pauseLength = 1; // ms
};

} // namespace Utils
