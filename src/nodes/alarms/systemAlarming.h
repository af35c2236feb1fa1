#pragma once

#include "nodes/alarms/AlarmFlood.h"
#include "nodes/alarms/AlarmTuning.h"
#include "nodes/alarms/TunedAlarm.h"
#include "nodes/alarms/engine/AlarmFeed.h"
#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/events/BasicEvent.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/links/ResourceLink.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/model/services/AuthPriv.h"
#include "nodes/values/Connection.h"
#include "nodes/values/NFont.h"

#include <functional>
#include <memory>
#include <vector>

namespace Nodes {

class AlarmEngine;
class AlarmTracker;
class BasicSignal;
class RecordsAlarm;
class SuppressionScripts;
class alarmColumn;
struct AlarmInputs;
struct AlarmMoment;

/// Watches the configured alarms, keeps their ISA-18.2 states, journals every change with the
/// user, and announces it. Evaluation runs on threads of the node model; operations: any thread.
/// A value of bad quality neither raises a limit alarm nor returns any alarm to normal. States
/// survive a restart of the station, in "alarms.sqlite" of the core's data directory.
class NODES_EXPORT systemAlarming : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x7002);
    struct Prop
    {
        static constexpr PropertyId<bool> Window{7201, "window"};
        static constexpr PropertyId<bool> Acknowledge{7202, "acknowledge"};
        static constexpr PropertyId<int> SoundButton{7203, "soundButton"};
        static constexpr PropertyId<int> ButtonSize{7204, "buttonSize"};
        static constexpr PropertyId<std::string> FontFamily{7205, "fontFamily"};
        static constexpr PropertyId<int> FontSize{7206, "fontSize"};
        static constexpr PropertyId<int> HeaderFontSize{7207, "headerFontSize"};
        static constexpr PropertyId<bool> HeaderBold{7208, "headerBold"};
        static constexpr PropertyId<ResourceLink> Sound1{7211, "sound1"};
        static constexpr PropertyId<ResourceLink> Sound2{7212, "sound2"};
        static constexpr PropertyId<ResourceLink> Sound3{7213, "sound3"};
        static constexpr PropertyId<ResourceLink> Sound4{7214, "sound4"};
        static constexpr PropertyId<bool> Tones{7215, "tones"};
        static constexpr PropertyId<int> FloodBegin{8401, "floodBegin"};
        static constexpr PropertyId<int> FloodEnd{8402, "floodEnd"};
    };

    systemAlarming();
    ~systemAlarming() override;
    static KindInfo Kind();

    // Settings of the alarm window.
    /// The window comes up with every alarm.
    bool isWindowEnabled() const { return m_isWindowEnabled; }
    /// The window has buttons to acknowledge.
    bool isAcknowledgeEnabled() const { return m_isAcknowledgeEnabled; }
    /// 1: the window has a button that mutes the alarms' sounds.
    int GetSoundButton() const { return m_soundButton; }
    /// Height of the window's buttons, pixels.
    int GetButtonSize() const { return m_buttonSize; }
    NFont GetFont() const { return {m_fontFamily, m_fontSize}; }
    NFont GetHeaderFont() const { return {m_fontFamily, m_headerFontSize, m_isHeaderBold}; }
    /// Sound of alarms of that priority (1 to 4) that have none of their own; empty without.
    ResourceLink GetSound(int priority) const;
    /// Alarms without any sound file are heard with a built-in tone.
    bool HasTones() const { return m_hasTones; }
    /// Empty: the window then shows all kinds of column.
    std::vector<const alarmColumn *> GetColumns() const;

    /// A flood begins with more alarms than this in ten minutes, and ends with fewer than that.
    int GetFloodBegin() const { return m_floodBegin; }
    int GetFloodEnd() const { return m_floodEnd; }

    Result Start() override;
    Result Stop() override;

    /// Alarms that are not Normal, latest change first: copies.
    std::vector<BasicEvent> GetActiveAlarms() const;
    /// The same for the alarms of one signal, in no order.
    std::vector<BasicEvent> GetActiveAlarms(const BasicSignal &signal) const;
    /// Alarms that are shelved, suppressed or out of service, latest change first: copies.
    std::vector<BasicEvent> GetHiddenAlarms() const;
    /// Rights are checked here: PrivilegeAcknowledge to acknowledge, PrivilegeShelve for the rest;
    /// AccessDenied is journalled. NotAvailable unless running. Acknowledges the occurrence that
    /// the operator saw: NotFound when the alarm has nothing to acknowledge (any more), Refused
    /// when that occurrence is over and another one waits, which then stays unacknowledged.
    [[nodiscard]] Result Acknowledge(const NodeLink &alarm, unsigned long occurrence,
                                     const std::string &comment = {});
    /// The same for many at once, in one step: a result for each, in their order. A refusal for
    /// lack of rights is journalled once, with the number of alarms.
    std::vector<Result> Acknowledge(const AlarmOccurrences &alarms,
                                    const std::string &comment = {});
    /// For commands that name no occurrence: acknowledges the present one if lists could show it at
    /// `seenBy`, a time of Clock::Steady (that of the gesture). NotFound when it came later or is
    /// hidden since it began.
    [[nodiscard]] Result AcknowledgeSeen(const NodeLink &alarm, Timestamp seenBy,
                                         const std::string &comment = {});
    /// Whatever was announced until now.
    [[nodiscard]] Result Acknowledge(const NodeLink &alarm, const std::string &comment = {});
    /// Hides the alarm for `seconds` (1 to 86400); it comes back by itself. The reason, here and
    /// below, goes into the journal and stands on lists as long as the alarm is hidden.
    [[nodiscard]] Result Shelve(const NodeLink &alarm, int seconds, const std::string &reason = {});
    [[nodiscard]] Result Unshelve(const NodeLink &alarm);
    [[nodiscard]] Result SetOutOfService(const NodeLink &alarm, bool out,
                                         const std::string &reason = {});
    [[nodiscard]] Result SetSuppressed(const NodeLink &alarm, bool suppressed,
                                       const std::string &reason = {});
    /// Ends a latched alarm; PrivilegeAcknowledge. NotFound when nothing is to be reset, Refused
    /// while its condition is there or it is not acknowledged: the detail says which, in Russian.
    [[nodiscard]] Result Reset(const NodeLink &alarm);

    /// Limit, deadband and delays that count now; those the alarm does not have are absent. Empty
    /// for strangers and while alarming is not running.
    AlarmTuning GetTuning(const NodeLink &alarm) const;
    /// Changes what is named, until it is reverted or the project says something new: the project
    /// itself stays as it is. PrivilegeConfigure. OutOfRange for numbers out of range and limits
    /// out of order (HH above H above L above LL), InvalidArgument for a limit of an alarm that has
    /// none; the detail says what and why, in Russian. Nothing is changed then.
    [[nodiscard]] Result Tune(const NodeLink &alarm, const AlarmTuning &tuning);
    /// As the project has it; NotFound when it already is, else the answers of Tune.
    [[nodiscard]] Result RevertTuning(const NodeLink &alarm);
    /// What deviates from the project.
    std::vector<TunedAlarm> GetTuned() const;

    /// More alarms in ten minutes than the limit set for `floodBegin`.
    AlarmFlood GetFlood() const;
    /// When a flood begins or ends, and while one lasts, when its number changes, once a second at
    /// most. The slot runs on one thread of the node model.
    Connection ConnectFlood(std::function<void(const AlarmFlood &)> slot);

    /// A new or changed alarm, in the order of the changes; at Start also those that an earlier run
    /// left. The slot runs on one thread of the node model.
    Connection ConnectAlarm(std::function<void(const BasicEvent &)> slot);
    /// The same for lists: how all alarms stand and then the latest state of each that changes, in
    /// batches, nothing missed in between. Any thread; see AlarmFeed.
    std::unique_ptr<AlarmFeed> OpenFeed(std::function<void()> wake);
    /// Any thread.
    AlarmHealth GetHealth() const;

private:
    using Change = std::function<Result(AlarmTracker &, const AlarmMoment &,
                                        const std::string &user, std::vector<BasicEvent> &)>;

    std::vector<AlarmInputs> collect();
    Result permit(const NodeLink &alarm, AuthPriv privilege, std::string &user);
    Result operate(const NodeLink &alarm, AuthPriv privilege, const Change &change);
    void refuse(const NodeLink &alarm, const std::string &user, const std::string &what);

    bool m_isWindowEnabled = true;
    bool m_isAcknowledgeEnabled = true;
    int m_soundButton = 1;
    int m_buttonSize = 48;
    std::string m_fontFamily = "DejaVu Sans";
    int m_fontSize = 12;
    int m_headerFontSize = 11;
    bool m_isHeaderBold = true;
    ResourceLink m_sound1;
    ResourceLink m_sound2;
    ResourceLink m_sound3;
    ResourceLink m_sound4;
    bool m_hasTones = true;
    int m_floodBegin = 10;
    int m_floodEnd = 5;
    std::unique_ptr<RecordsAlarm> m_recordsAlarm;
    std::unique_ptr<SuppressionScripts> m_scripts;
    std::shared_ptr<AlarmEngine> m_engine; // feeds may outlive the node
};

} // namespace Nodes
