#pragma once

#include "widgets/WidgetsExport.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <array>

namespace Nodes {
class systemAlarming;
}

namespace Widgets {

/// What alarms sound with that have no file of their own, by priority.
struct WIDGETS_EXPORT AlarmSoundDefaults
{
    static constexpr int PriorityCount = 4;

    /// Of the subsystem; without one no files, but tones.
    static AlarmSoundDefaults of(const Nodes::systemAlarming *alarming);
    /// "" without.
    QString file(int priority) const;

    std::array<QString, PriorityCount> files; ///< full paths, of priority 1 first
    bool hasTones = true;                     ///< where there is no file, the built-in tone sounds
};

/// What is to be heard.
struct AlarmSoundChoice
{
    int priority = 0; ///< of the alarms heard; 0: silence
    QStringList files;
    bool hasTone = false; ///< the tone of that priority, too

    bool isSilent() const { return files.isEmpty() && !hasTone; }
    bool operator==(const AlarmSoundChoice &other) const
    {
        return priority == other.priority && files == other.files && hasTone == other.hasTone;
    }
};

/// Counts the alarms that wait and sound. Heard are only those of the highest priority: what is
/// less urgent does not mix in, and follows when those above are acknowledged.
class WIDGETS_EXPORT AlarmSoundBook
{
public:
    /// Counts an alarm in (1) or out (-1). "" sounds with the tone.
    void count(int priority, const QString &file, int step);
    AlarmSoundChoice choice() const;

private:
    QMap<int, QMap<QString, int>> m_alarms; // by priority and file
};

} // namespace Widgets
