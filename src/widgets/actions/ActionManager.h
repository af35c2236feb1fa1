#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/actions/running/ActionTrigger.h"

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

/// Turns mouse gestures on windows and elements into their configured action lists and hands them
/// to the window manager. Event filter of every runtime window, its viewport, and every element
/// host; consumes no event and executes nothing itself. GUI thread.
class WIDGETS_EXPORT ActionManager : public QObject
{
    Q_OBJECT

public:
    static ActionManager &getInstance();

    /// Queues the list and passes it on at once; nothing happens without a window manager.
    void appendActions(std::vector<Nodes::NodeLink> const &actions);
    /// The same for what happens to `where`, which may be embedded in a scene: tells the actions
    /// its display and the gesture's place on the desktop, if it has one.
    void trigger(const Nodes::NodeLinks &actions, const QWidget *where,
                 const std::optional<QPoint> &point, ActionOrigin origin = ActionOrigin::Gesture);
    void trigger(const Nodes::NodeLinks &actions, const ActionTrigger &trigger);
    /// Trigger of what happens there now. Without a window manager it knows only the place.
    static ActionTrigger triggerAt(const QWidget *where, const std::optional<QPoint> &point,
                                   ActionOrigin origin = ActionOrigin::Gesture);

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
