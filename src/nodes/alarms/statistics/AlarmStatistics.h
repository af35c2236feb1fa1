#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/statistics/AlarmFigures.h"
#include "nodes/alarms/statistics/DurationHistogram.h"
#include "nodes/alarms/statistics/FloodMeter.h"

#include <unordered_map>

namespace Nodes {

struct BasicEvent;

/// How well alarms served the operators in a period, from the entries of the journal in the order
/// of their time. Memory grows with the number of alarms and with the period's length, not with
/// that of the journal. One thread at a time.
///
/// An alarm counts when operators get to see it: when it is raised, or, raised while it was hidden,
/// when it comes from the shelf; an occurrence counts once. Entries before the period tell how it
/// began: which alarms were up, whether there was a flood. Entries that are no alarm's are ignored.
class NODES_EXPORT AlarmStatistics
{
public:
    static constexpr Timestamp Minute = Timestamp(60) * 1000000;
    static constexpr Timestamp Day = Timestamp(86400) * 1000000;

    struct Settings
    {
        Timestamp begin = 0; ///< of the period, inclusive
        Timestamp end = 0;   ///< exclusive, after begin
        Timestamp from = 0;  ///< entries are added from there on; 0: from begin
        Timestamp fleeting = Timestamp(10) * 1000000; ///< nobody acts within less
        Timestamp standing = Day;                     ///< beyond that an occurrence stands
        FloodMeter::Limits floods = {};
        /// In the order of their times; what lies outside of the period is cut off.
        std::vector<AlarmShift> shifts = {};
    };

    explicit AlarmStatistics(const Settings &settings);

    /// Before any entry: an alarm that is up now (systemAlarming::GetActiveAlarms). Where it has
    /// been up since before the first entry, no entry would tell.
    void Seed(const BasicEvent &alarm);
    void Add(const BasicEvent &entry);
    /// Of what was added until now.
    AlarmFigures GetFigures() const;

private:
    /// One alarm and the occurrence that operators saw last.
    struct Track
    {
        AlarmCount count;
        unsigned long occurrence = 0;
        unsigned long returned = 0; // highest occurrence that is known to be over
        Timestamp shown = 0;        // when operators saw it; 0: not known
        bool isActive = false;
        bool isHidden = false;
        bool isWaiting = false; // for its acknowledgement
        bool isAcked = false;
        bool isCounted = false;            // it came in the period
        std::array<Timestamp, 2> recent{}; // raised last, and before that; 0: not yet
    };

    bool isInPeriod(Timestamp at) const { return at >= m_settings.begin && at < m_settings.end; }
    void follow(Track &track, const BasicEvent &entry, Timestamp at);
    void show(Track &track, const BasicEvent &entry, Timestamp at);
    void count(Track &track, const BasicEvent &entry, Timestamp at);
    void prepareShifts();
    void countShift(Timestamp at);
    void noteFlood(const FloodMeter::Flood &flood);
    void adopt(Track &track, const BasicEvent &entry, Timestamp at);
    void clear(Track &track, const BasicEvent &entry, Timestamp at);
    void hide(Track &track);
    void acknowledge(Track &track, const BasicEvent &entry, Timestamp at);
    void noteStanding(AlarmCount &count, Timestamp duration) const;
    AlarmCount finish(const Track &track, AlarmFigures &figures) const;
    void finishAlarms(AlarmFigures &figures) const;

    const Settings m_settings;
    AlarmFigures m_figures; // what is known before the end
    Timestamp m_latest = 0;
    FloodMeter m_floods;
    DurationHistogram m_latencies;
    std::unordered_map<unsigned long, Track> m_tracks; // by node
};

} // namespace Nodes
