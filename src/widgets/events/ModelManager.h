#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QModelIndex>
#include <QObject>
#include <QTimer>

namespace Nodes {
class Result;
class systemAlarming;
} // namespace Nodes

namespace Utils {
class SortingModel;
}

namespace Widgets {

class AlarmSound;
class ModelAlarms;
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
    Utils::SortingModel &sorting() const { return *m_sorting; }
    const AlarmSound &sound() const { return *m_sound; }

    /// Shows the rows in the table; a double click there acknowledges.
    void attach(TableAlarms &table);
    /// Columns and fonts anew from the alarm subsystem.
    void readSettings();

    /// Adds the alarm's row or brings it up to date. One that is over and acknowledged is not
    /// added, and one that is shelved, suppressed or out of service leaves the list.
    void addOrUpdate(const Nodes::BasicEvent &event);
    /// Makes the rows match the subsystem's alarms; nothing while it does not run.
    void refresh();

public slots:
    void acknowledgeAll();
    /// Of the source model; refusals are told to the operator. Nothing for an invalid index.
    void acknowledge(const QModelIndex &index);
    void setMuted(bool isMuted);
    void setHideInactive(bool isHiding);
    /// Removes what is over and acknowledged, now and from now on.
    void setRemoveInactive(bool isRemoving);

private:
    Nodes::Result acknowledgeRow(int row, bool isAskedFirst);
    void confirm(int row);
    void removeWhenInactive(int row);
    void updateSound();

    ModelAlarms *m_model;
    Utils::SortingModel *m_sorting;
    AlarmSound *m_sound;
    QTimer m_soundTimer; // a flood of alarms is one change of what is heard
    bool m_isRemoving = true;
};

} // namespace Widgets
