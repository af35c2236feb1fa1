#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/values/Timestamp.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace Widgets {

/// What an alarm banner has to say, in the order of its gravity, and of which alarm. A value.
struct WIDGETS_EXPORT BannerFacts
{
    enum State {
        Drawn,        ///< in an editor: nothing is known
        Absent,       ///< the project has no alarms
        Off,          ///< nobody watches the alarms
        Late,         ///< what is known here is not how alarms stand
        Calm,         ///< no alarm
        Acknowledged, ///< alarms, all of them seen by somebody
        Waiting
    };
    struct Count
    {
        int waiting = 0; ///< to be acknowledged, whether still there or not
        int active = 0;
        bool operator==(const Count &o) const { return waiting == o.waiting && active == o.active; }
    };
    using Alarms = QHash<unsigned long, Nodes::BasicEvent>;

    State state = Drawn;
    /// While it is Waiting: the newest of the highest priority that waits.
    Nodes::BasicEvent top;
    std::array<Count, 4> counts; ///< by priority, 1 first
    int hidden = 0;              ///< shelved, suppressed, out of service
    int flood = -1;              ///< alarms in ten minutes; below 0: no flood
    bool isMuted = false;
    bool isFiltered = false; ///< the alarm window shows not all
    bool mayAcknowledge = false;

    /// State, alarm and counts of these alarms; of one area only, unless it is "".
    static BannerFacts of(const Alarms &alarms, const std::string &area = {});
    /// Whether an alarm has stood otherwise than it is known here since before that time.
    static bool isLate(const std::vector<Nodes::BasicEvent> &actual, const Alarms &known,
                       Nodes::Timestamp before);

    Nodes::AlarmOccurrence occurrence() const { return {top.sourceNode, top.occurrence}; }
    bool isTrouble() const { return state == Off || state == Late || state == Absent; }
    bool blinks() const;

    /// For operators: what it is about, the lesser facts about it, and the signs beside it.
    QString headline() const;
    QString details() const;
    QStringList notes() const;

    bool operator==(const BannerFacts &o) const;
    bool operator!=(const BannerFacts &o) const { return !(*this == o); }
};

} // namespace Widgets
