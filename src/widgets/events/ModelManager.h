#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/engine/AlarmOccurrence.h"
#include "nodes/events/BasicEvent.h"

#include <QModelIndex>
#include <QObject>
#include <QSet>
#include <QTimer>

#include <vector>

namespace Widgets {

class AlarmList;
class AlarmSound;
class ModelAlarms;
class ModelHidden;
struct AlarmFilter;
class TableAlarms;

/// Keeps the rows of the alarm window and their sounds, and acknowledges them. GUI thread.
class WIDGETS_EXPORT ModelManager : public QObject
{
    Q_OBJECT

public:
    explicit ModelManager(QObject *parent = nullptr);
    ~ModelManager() override;

    ModelAlarms &model() const { return *m_model; }
    /// The rows as tables show them.
    AlarmList &sorting() const { return *m_sorting; }
    /// Alarms that are shelved, suppressed or out of service.
    ModelHidden &hidden() const { return *m_hidden; }
    const AlarmSound &sound() const { return *m_sound; }

    /// Shows the rows in the table; a double click there acknowledges.
    void attach(TableAlarms &table);
    /// Columns and fonts anew from the alarm subsystem.
    void readSettings();

    /// Adds the alarms' rows or brings them up to date. One that is over and acknowledged is not
    /// added, and one that is shelved, suppressed or out of service leaves the list. Whether any is
    /// news that an operator has to see; see AlarmRow::enNews.
    bool addOrUpdate(const std::vector<Nodes::BasicEvent> &events);
    /// These alarms, by their ids, are over.
    void forget(const QSet<unsigned long> &alarms);
    /// Makes the rows match the subsystem's alarms; nothing while it does not run.
    void refresh();

    /// How many there are, of the model and of them in the list.
    struct Counts
    {
        int all = 0;
        int shown = 0;
        int waiting = 0;      ///< for acknowledgement, shown or not
        int hiddenUrgent = 0; ///< of those with priority 1 that the list does not show
    };
    Counts counts() const;

    void setFilter(const AlarmFilter &filter);
    /// Lets the rows stand by area, or not any more.
    void setGrouped(bool isGrouped);
    void setFolded(const std::string &area, bool isFolded);

    /// Alarms that the list showed and that waited when its revision was that, as an operator saw
    /// them then; see ModelAlarms::revision. What a filter or a folded area hides nobody saw.
    Nodes::AlarmOccurrences waiting(unsigned revision) const;
    /// Acknowledges these occurrences, and no later ones of the same alarms. Nothing where the
    /// subsystem's window may not acknowledge. Refusals are told to the operator.
    void acknowledge(const Nodes::AlarmOccurrences &seen, const std::string &comment = {});

signals:
    /// Around each change of the rows, so that views can keep the rows where they stand.
    void changeBegins();
    void changed();

public slots:
    /// Whatever the list shows that waits now, seen or not.
    void acknowledgeAll();
    /// What the row shows; of the source model. Nothing for an invalid index.
    void acknowledge(const QModelIndex &index);
    void setMuted(bool isMuted);
    void setHideInactive(bool isHiding);
    /// Removes what is over and acknowledged, now and from now on.
    void setRemoveInactive(bool isRemoving);

private:
    void follow(bool isOrderChanged);
    void updateSound();

    ModelAlarms *m_model;
    AlarmList *m_sorting;
    ModelHidden *m_hidden;
    AlarmSound *m_sound;
    QTimer m_soundTimer; // a flood of alarms is one change of what is heard
};

} // namespace Widgets
