#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/alarms/AlarmSummary.h"

#include "nodes/events/BasicEvent.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QVector>

#include <vector>

namespace Widgets {

/// What all that is shown knows of the station's alarms: those that are not normal, hidden ones
/// too, by alarm and by signal, as they were last told. Filled by whoever brings the alarms to the
/// GUI. One per process, GUI thread.
class WIDGETS_EXPORT AlarmBoard : public QObject
{
    Q_OBJECT

public:
    static AlarmBoard &instance();

    /// How these alarms stand now, each once; tells `changed` once.
    void take(const std::vector<Nodes::BasicEvent> &alarms);
    /// These alarms, by their ids, are over.
    void forget(const QSet<unsigned long> &alarms);
    /// Nobody tells of alarms any more, or tells of all anew.
    void clear();

    /// By the alarm's id.
    const QHash<unsigned long, Nodes::BasicEvent> &alarms() const { return m_alarms; }
    bool isEmpty() const { return m_alarms.isEmpty(); }
    /// Of the alarms of that signal, by its id.
    AlarmSummary of(unsigned long signal) const;

    /// What an operator did to hear or see less of them; told to others on banners.
    void setMuted(bool isMuted);
    bool isMuted() const { return m_isMuted; }
    /// Filter of the alarm window in a few words; "" without.
    void setFilter(const QString &filter);
    const QString &filter() const { return m_filter; }

signals:
    /// Alarms of these signals, by their ids, stand otherwise than before; 0 for those of none.
    void changed(const QSet<unsigned long> &ofSignals);
    /// How these alarms stand now, each once; those that are over as normal ones.
    void taken(const std::vector<Nodes::BasicEvent> &alarms);
    /// Muting or filter changed.
    void viewChanged();

private:
    AlarmBoard() = default;
    void remove(unsigned long alarm, QSet<unsigned long> &touched);

    QHash<unsigned long, Nodes::BasicEvent> m_alarms;
    QHash<unsigned long, unsigned long> m_signalOf;          // of an alarm
    QHash<unsigned long, QVector<unsigned long>> m_ofSignal; // its alarms
    bool m_isMuted = false;
    QString m_filter;
};

} // namespace Widgets
