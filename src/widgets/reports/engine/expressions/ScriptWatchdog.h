#pragma once

#include "widgets/reports/engine/expressions/ScriptLimits.h"

#include <condition_variable>
#include <mutex>
#include <thread>

class QJSEngine;

namespace LimeReport {

/// Ends a script that runs too long or makes the process grow: a thread that looks at it every few
/// milliseconds. The engine belongs to the thread that begins and ends scripts.
class ScriptWatchdog
{
public:
    enum class Verdict { Fine, TooLong, TooLarge, Cancelled };

    ScriptWatchdog(QJSEngine &engine, const ScriptLimits &limits);
    ~ScriptWatchdog();

    void begin();
    /// Makes the engine ready for the next script.
    Verdict end();

    /// Any thread. The script under way is ended; later ones don't begin to run.
    void cancel();

private:
    using Clock = std::chrono::steady_clock;

    void watch();
    void look();

    QJSEngine &m_engine;
    const ScriptLimits m_limits;
    std::mutex m_mutex;
    std::condition_variable m_wake;
    bool m_isEnding = false;
    bool m_isRunning = false;
    bool m_isCancelled = false;
    Verdict m_verdict = Verdict::Fine;
    Clock::time_point m_begin;
    std::size_t m_bytes = 0; // of the process when the script was first looked at
    std::thread m_thread;
};

} // namespace LimeReport
