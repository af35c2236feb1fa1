#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QObject>

#include <functional>
#include <vector>

class QWidget;

namespace Nodes {
class BasicAlarm;
class Result;
class systemAlarming;
} // namespace Nodes

namespace Widgets {

class AlarmNoteDialog;
class ModelManager;

/// What an operator can do with one alarm, and what has to be asked for it. The alarm subsystem
/// checks the rights and journals; what it refuses is told. GUI thread.
class WIDGETS_EXPORT AlarmCommands : public QObject
{
    Q_OBJECT

public:
    enum Command { Comment, Reset, Jump, Trend, Shelve, OutOfService, Limits, TakeBack };

    struct Row
    {
        Command command;
        const char *text; ///< Russian
    };
    /// What is offered for an alarm of the list, in order.
    static const std::vector<Row> &rows();

    /// `window` is that of the alarms, and owns the dialogs.
    AlarmCommands(ModelManager &manager, QWidget &window);

    /// Why that cannot be done with the alarm, for the operator; "" when it can.
    static QString obstacle(Command command, const Nodes::BasicEvent &alarm);
    /// Of the occurrence told, whatever has become of it meanwhile.
    void run(Command command, const Nodes::BasicEvent &alarm);

private:
    using Ask = std::function<void(const AlarmNoteDialog &)>;

    AlarmNoteDialog *makeDialog(const Nodes::BasicEvent &alarm, const QString &title,
                                const QString &prompt, const QString &action, Ask onAccepted);
    void askComment(const Nodes::BasicEvent &alarm);
    void askShelf(const Nodes::BasicEvent &alarm);
    void askOutOfService(const Nodes::BasicEvent &alarm);
    void openLimits(const Nodes::BasicEvent &alarm);
    void jump(const Nodes::BasicEvent &alarm);
    void takeBack(const Nodes::BasicEvent &alarm);
    int display() const;

    ModelManager &m_manager;
    QWidget &m_window;
};

} // namespace Widgets
