#pragma once

#include "widgets/events/filter/AlarmFilter.h"

#include "nodes/values/Connection.h"

#include <QObject>
#include <QStringList>

namespace Widgets {

class AlarmFilterBar;
class ModelManager;

/// Lets the controls of a filter choose what a list shows, and keeps the choice for whoever is
/// logged in. GUI thread.
class AlarmFiltering : public QObject
{
    Q_OBJECT

public:
    /// Both outlive it. Begins with what the current user keeps.
    AlarmFiltering(ModelManager &manager, AlarmFilterBar &bar, QObject *parent = nullptr);

    /// Shows everything again, and keeps that.
    void reset();
    /// The filter in a few words; "" without.
    QString words() const;
    /// Areas of the list's alarms anew.
    void findAreas();

private:
    void load();
    void choose(const AlarmFilter &filter);

    ModelManager &m_manager;
    AlarmFilterBar &m_bar;
    QStringList m_areas;
    Nodes::ScopedConnection m_userChanged;
};

} // namespace Widgets
