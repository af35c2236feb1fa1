#pragma once

#include "nodes/auth/ActingUser.h"
#include "nodes/model/links/NodeLink.h"

#include <QPoint>

#include <memory>
#include <optional>

namespace Widgets {

/// What had a list of actions queued.
enum class ActionOrigin {
    Gesture, ///< an operator's hand
    Timer,   ///< an operation timer
    Request, ///< the node model
    OnOpen,  ///< a window's list, as the next
    OnClose
};

/// Where a queued action comes from: one value that travels with each run of it, so that two
/// gestures on one node never mix.
struct ActionTrigger
{
    ActionOrigin origin = ActionOrigin::Gesture;
    /// What it all began with: the gesture behind the on-open list of a window that it opened.
    ActionOrigin root = ActionOrigin::Gesture;
    /// Ends what a press began: never refused and never behind others.
    bool isRelease = false;
    std::optional<int> display;  ///< 0-based; none: what the action's node says
    std::optional<QPoint> point; ///< place of the gesture on the desktop
    Nodes::NodeLink element;     ///< that the gesture was made on; empty for all else
    /// How many actions, each pushed while another one ran, led here; 0 when the operator, a timer
    /// or a value did.
    int generation = 0;
    /// Whose doing it is: one for the whole list, so that a log-in in it counts for what follows.
    /// GUI thread once it is queued; null: whoever is logged in.
    std::shared_ptr<Nodes::ActingUser> user;
    /// True while an action of the list waits for what those after it depend on: they are kept
    /// back. One for the list, GUI thread; null for a list of one.
    std::shared_ptr<bool> isHeldBack;
    /// Held by every action of a list until it starts; null where nobody waits for that.
    std::shared_ptr<const void> waiting;

    /// An operator waits for it: its refusal is told.
    bool isOperators() const { return root == ActionOrigin::Gesture; }
    /// Overtakes what nobody waits for. The lists of windows do so whoever opened them: the list
    /// of an operator who closes one must not come before that of its opening.
    bool isUrgent() const
    {
        return isOperators() || isRelease || origin == ActionOrigin::OnOpen ||
               origin == ActionOrigin::OnClose;
    }
    /// Still to be run when the station ends: what operators asked for, and what windows do on
    /// closing. What timers piled up would act on a plant that has moved on.
    bool outlivesStation() const
    {
        return isOperators() || isRelease || origin == ActionOrigin::OnClose ||
               root == ActionOrigin::OnClose;
    }
};

} // namespace Widgets
