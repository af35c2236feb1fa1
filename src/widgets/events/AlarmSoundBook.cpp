#include "widgets/events/AlarmSoundBook.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/model/links/ResourceLink.h"

namespace Widgets {

AlarmSoundDefaults AlarmSoundDefaults::of(const Nodes::systemAlarming *alarming)
{
    AlarmSoundDefaults defaults;
    if (!alarming)
        return defaults;
    for (int priority = 1; priority <= PriorityCount; ++priority)
        defaults.files[std::size_t(priority - 1)] =
            QString::fromStdString(alarming->GetSound(priority).GetFullFilePath());
    defaults.hasTones = alarming->HasTones();
    return defaults;
}

QString AlarmSoundDefaults::file(int priority) const
{
    return priority >= 1 && priority <= PriorityCount ? files[std::size_t(priority - 1)]
                                                      : QString();
}

void AlarmSoundBook::count(int priority, const QString &file, int step)
{
    QMap<QString, int> &files = m_alarms[priority];
    int &alarms = files[file];
    alarms += step;
    if (alarms == 0)
        files.remove(file);
    if (files.isEmpty())
        m_alarms.remove(priority);
}

AlarmSoundChoice AlarmSoundBook::choice() const
{
    AlarmSoundChoice choice;
    if (m_alarms.isEmpty())
        return choice;
    choice.priority = m_alarms.firstKey();
    choice.files = m_alarms.first().keys();
    choice.hasTone = choice.files.removeAll(QString()) > 0;
    return choice;
}

} // namespace Widgets
