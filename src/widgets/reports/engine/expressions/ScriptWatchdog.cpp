#include "widgets/reports/engine/expressions/ScriptWatchdog.h"

#include <QJSEngine>

#include <unistd.h>

#include <cstdio>

namespace LimeReport {

namespace {

constexpr std::chrono::milliseconds lookEvery(10);

// Resident bytes of this process; 0 when the system doesn't tell.
std::size_t residentBytes()
{
    std::FILE *file = std::fopen("/proc/self/statm", "r");
    if (!file)
        return 0;
    unsigned long total = 0;
    unsigned long resident = 0;
    const bool isTold = std::fscanf(file, "%lu %lu", &total, &resident) == 2;
    std::fclose(file);
    return isTold ? resident * std::size_t(::sysconf(_SC_PAGESIZE)) : 0;
}

} // namespace

ScriptWatchdog::ScriptWatchdog(QJSEngine &engine, const ScriptLimits &limits)
    : m_engine(engine), m_limits(limits), m_thread([this] { watch(); })
{
}

ScriptWatchdog::~ScriptWatchdog()
{
    {
        const std::lock_guard lock(m_mutex);
        m_isEnding = true;
    }
    m_wake.notify_one();
    m_thread.join();
}

void ScriptWatchdog::begin()
{
    const std::lock_guard lock(m_mutex);
    m_isRunning = true;
    m_bytes = 0;
    m_begin = Clock::now();
}

ScriptWatchdog::Verdict ScriptWatchdog::end()
{
    const std::lock_guard lock(m_mutex);
    m_isRunning = false;
    const Verdict verdict = m_isCancelled ? Verdict::Cancelled : m_verdict;
    if (m_verdict != Verdict::Fine && !m_isCancelled)
        m_engine.setInterrupted(false);
    m_verdict = Verdict::Fine;
    return verdict;
}

void ScriptWatchdog::cancel()
{
    const std::lock_guard lock(m_mutex);
    m_isCancelled = true;
    m_engine.setInterrupted(true);
}

void ScriptWatchdog::watch()
{
    std::unique_lock lock(m_mutex);
    while (!m_isEnding) {
        m_wake.wait_for(lock, lookEvery);
        if (m_isRunning && m_verdict == Verdict::Fine)
            look();
    }
}

void ScriptWatchdog::look()
{
    const Clock::duration age = Clock::now() - m_begin;
    if (age > m_limits.time) {
        m_verdict = Verdict::TooLong;
    } else if (age > lookEvery / 2) { // most scripts never get that old: no file is read for them
        const std::size_t bytes = residentBytes();
        if (m_bytes == 0)
            m_bytes = bytes;
        else if (bytes > m_bytes + m_limits.bytes)
            m_verdict = Verdict::TooLarge;
    }
    if (m_verdict != Verdict::Fine)
        m_engine.setInterrupted(true);
}

} // namespace LimeReport
