#pragma once

#include "nodes/values/Result.h"

#include <memory>

namespace Nodes {

class ArchiveRecording;
class BasicSignal;
class SampleTap;
class SignalIntake;
class ValueCell;
class systemCore;

/// Keeps the history of one signal from Start to Stop: in the archive when the station records one,
/// else the latest samples in memory. GUI thread.
class HistoryTap
{
public:
    struct Settings
    {
        int samples = 0;     ///< in memory
        double deadband = 0; ///< of the archive, see SignalIntake
    };

    HistoryTap();
    ~HistoryTap();
    HistoryTap(const HistoryTap &) = delete;
    HistoryTap &operator=(const HistoryTap &) = delete;

    /// Duplicate when somebody else keeps its history already.
    [[nodiscard]] Result Start(const systemCore &core, const BasicSignal &signal,
                               const Settings &settings);
    /// Nothing is known of the signal from now on.
    void Stop();
    bool IsRunning() const { return m_cell != nullptr; }

private:
    std::shared_ptr<ValueCell> m_cell; // null while not running
    std::shared_ptr<SampleTap> m_tap;
    std::shared_ptr<SignalIntake> m_intake; // null without an archive
    std::shared_ptr<ArchiveRecording> m_recording;
};

} // namespace Nodes
