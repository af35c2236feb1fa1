#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/engine/AlarmTracker.h"
#include "nodes/alarms/statistics/AlarmStatistics.h"

namespace Nodes {

/// What an alarm with certain settings would have done: archived samples go through the tracker
/// that the engine uses, with the samples' times on its clocks, and its records into the
/// statistics. Nobody acknowledges. One thread at a time.
class NODES_EXPORT AlarmTrial
{
public:
    /// Samples may come from `period.from` on, so that the period begins as it would have.
    AlarmTrial(AlarmSettings settings, const AlarmStatistics::Settings &period);

    /// In order of time, of both signals together.
    void Judge(const SignalValue &value, Timestamp at);
    void JudgeReference(const SignalValue &value, Timestamp at);
    /// Up to the period's end.
    AlarmFigures Finish();

private:
    void pass(Timestamp at);
    void count();

    unsigned long m_lastOccurrence = 0;
    AlarmTracker m_tracker;
    AlarmTracker::Records m_records;
    AlarmStatistics m_statistics;
    const Timestamp m_end;
};

} // namespace Nodes
