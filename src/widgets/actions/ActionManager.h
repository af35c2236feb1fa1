#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionSink.h"

#include "nodes/model/links/NodeLink.h"

#include <QMutex>
#include <QObject>
#include <QPoint>
#include <QVector>

#include <optional>
#include <vector>

class QGraphicsSceneHoverEvent;
class QGraphicsSceneMouseEvent;
class QMouseEvent;
class QWidget;

namespace Nodes {
class BasicWidget;
class BasicWindow;
} // namespace Nodes

namespace Widgets {

class ActionManagerDestroyer;
class ProxyWidget;
class WindowBasic;

/// Turns mouse gestures on windows and elements into their configured action lists. Event filter
/// of every runtime window, its viewport, and every element host; consumes no event. The process's
/// sink of actions besides: hands lists to the window manager and executes nothing itself. GUI
/// thread.
class WIDGETS_EXPORT ActionManager : public QObject, public ActionSink
{
    Q_OBJECT

public:
    static ActionManager &getInstance();

    /// Queues the list and passes it on at once; nothing happens without a window manager.
    void appendActions(std::vector<Nodes::NodeLink> const &actions);

    /// Without a window manager it knows only the place.
    ActionTrigger triggerAt(const QWidget *where, const std::optional<QPoint> &point,
                            ActionOrigin origin = ActionOrigin::Gesture) const override;
    void push(const Nodes::NodeLinks &actions, const ActionTrigger &trigger) override;
    std::unique_ptr<OwedActions> owe(const Nodes::NodeLinks &actions,
                                     const ActionTrigger &trigger) override;
    void warn(const QString &text) override;
    void notify(const QString &text) override;
    void journalOnce(const Nodes::ConfigNode &node, const std::string &text) override;

    bool canJump(const Nodes::NodeLink &source) const override;
    void jump(const Nodes::NodeLink &source, const QWidget *where) override;
    void retire(const Nodes::NodeLink &instance) override;
    void showAlarms() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onPushActions();

private:
    friend class ActionManagerDestroyer;

    /// What tells an event that Qt passes on from a window's child to the window itself.
    struct Gesture
    {
        int type = 0;
        unsigned long timestamp = 0;
        QPoint point;
        bool operator==(const Gesture &o) const
        {
            return type == o.type && timestamp == o.timestamp && point == o.point;
        }
    };

    ActionManager();
    ~ActionManager() override;

    static const Nodes::NodeLinks &getMouseActions(const Nodes::BasicWidget &node,
                                                   const QGraphicsSceneMouseEvent &event);
    static const Nodes::NodeLinks &getMouseActions(const Nodes::BasicWindow &node,
                                                   const QMouseEvent &event);
    static const Nodes::NodeLinks &getHoverActions(const Nodes::BasicWidget &node,
                                                   const QGraphicsSceneHoverEvent &event);
    static const Nodes::NodeLinks &getHoverActions(const Nodes::BasicWindow &node,
                                                   const QEvent &event);

    void filterElement(ProxyWidget &element, QEvent &event);
    void filterWindow(WindowBasic &window, bool isChild, QEvent &event);
    bool isPassedOn(bool isChild, const QMouseEvent &event);

    struct Pending
    {
        Nodes::NodeLinks actions;
        std::optional<ActionTrigger> trigger;
    };

    void append(Pending pending);

    QMutex m_mutex;
    QVector<Pending> m_pending;
    std::optional<Gesture> m_seenOnChild;
};

} // namespace Widgets
