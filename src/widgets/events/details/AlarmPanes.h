#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QTimer>
#include <QWidget>

#include <optional>

namespace Widgets {

class AlarmCommands;
class AlarmDetails;
class AlarmHiddenPane;
class ModelManager;
class TableAlarms;

/// The pane below the list of alarms: the selected alarm in full, or the list of those that are
/// hidden; at most one of them. GUI thread.
class WIDGETS_EXPORT AlarmPanes : public QWidget
{
    Q_OBJECT

public:
    enum Pane { None, Details, Hidden };

    AlarmPanes(ModelManager &manager, TableAlarms &table, QWidget *parent = nullptr);

    void setPane(Pane pane);
    Pane pane() const { return m_pane; }
    AlarmDetails &details() const { return *m_details; }
    AlarmHiddenPane &hidden() const { return *m_hidden; }
    void setRoom(int width);

public slots:
    /// Shows the selected alarm as it stands now.
    void follow();

signals:
    void paneChanged();

private:
    void tick();
    std::optional<Nodes::BasicEvent> selected() const;
    void run(int command, const Nodes::BasicEvent &alarm);
    void openMenu(const QPoint &place);

    ModelManager &m_manager;
    TableAlarms &m_table;
    AlarmDetails *m_details;
    AlarmHiddenPane *m_hidden;
    AlarmCommands *m_commands = nullptr; // made when there is a window
    QTimer m_clock;
    Pane m_pane = None;
};

} // namespace Widgets
