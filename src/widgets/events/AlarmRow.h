#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "nodes/events/EventInfo.h"

#include <QCollatorSortKey>
#include <QString>

#include <memory>

namespace Widgets {

struct AlarmSoundDefaults;

/// Whether an alarm's condition is present, as its row has it under StateCodeRole.
enum enAlarmStateCode {
    AlarmElsewhere = 0, ///< no alarm, or shelved, suppressed, out of service: not on the list
    AlarmGone = 2,
    AlarmPresent = 3
};
WIDGETS_EXPORT enAlarmStateCode AlarmStateCode(const Nodes::BasicEvent &event);

/// State of a row's sound.
enum enAlarmSound {
    SoundNone = 0,    ///< waits for acknowledgement, but has no sound
    SoundPlaying = 1, ///< as long as it is of the highest priority that waits
    SoundAcknowledged = 3
};

/// One alarm of the alarm window, with what its list needs to sort and paint it quickly.
struct WIDGETS_EXPORT AlarmRow
{
    /// The defaults outlive the row.
    AlarmRow(const Nodes::BasicEvent &event, unsigned revision, const AlarmSoundDefaults &defaults);

    /// What an event told: nothing, for it is known or overtaken; something; something that an
    /// operator has to see: the alarm came anew, waits again, or its condition changed while it
    /// waits. Not that it was acknowledged, is over, or its value is doubtful.
    enum enNews { Nothing, Minor, ToBeSeen };
    /// Shows what the event tells.
    enNews take(const Nodes::BasicEvent &event, unsigned revision);
    /// Whether the event gives an alarm a row that has none.
    static bool isToBeListed(const Nodes::BasicEvent &event);
    /// Counts before the subsystem tells it.
    void acknowledge();

    const Nodes::BasicEvent &event() const { return info->GetEvent(); }
    Nodes::AlarmOccurrence occurrence() const { return {event().sourceNode, event().occurrence}; }
    unsigned long alarm() const { return event().sourceNode.GetNodeId(); }
    /// As the row shows it now.
    Nodes::AlarmState state() const;
    /// When this occurrence was raised; where the event does not tell, its own time.
    Nodes::Timestamp raised() const;
    /// Over and acknowledged: nothing is left to be done about it.
    bool isInactive() const { return stateCode != AlarmPresent && isAcknowledged; }
    /// What waits for acknowledgement stands above what only lasts, the graver before the lesser.
    int urgency() const;
    /// What the column of that kind shows; as a tool tip, where the row shows a sign instead.
    QString text(int kind) const;
    /// Value of the alarm's signal in words: "да" and "нет", numbers with the decimals and the unit
    /// that the signal has now.
    static QString valueText(const Nodes::BasicEvent &event);
    /// Whether the text, area or source has that in it, given in lower case.
    bool contains(const QString &lowerCase) const;
    /// Area that it stands in; nodes tell theirs. "" without one.
    const std::string &area() const { return event().area; }
    /// Below, at or above 0 as this row stands before, beside or after the other.
    int compare(const AlarmRow &other, int kind) const;

    std::unique_ptr<Nodes::EventInfo> info; // pointed to from outside
    int stateCode = AlarmElsewhere;
    int soundState = SoundNone;
    bool isAcknowledged = false;
    bool isLeaving = false;  // at the end of the batch
    unsigned waitsSince = 0; // revision of the list in which this occurrence came to wait
    QString soundFile;       // its own, else that of its priority; "": the tone, or nothing
    QCollatorSortKey textKey;
    const QCollatorSortKey *areaKey; // never null
    bool isFirstUp = false;          // of its group; here for sorting

private:
    void readTexts();
    bool hasSound() const;
    void judge();
    void readNode();

    const AlarmSoundDefaults *m_defaults; // of sounds
    mutable QString m_searched; // text, area and source in lower case; null until asked for
};

} // namespace Widgets
