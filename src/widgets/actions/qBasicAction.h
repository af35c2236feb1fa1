#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/ActionTrigger.h"

#include <QMetaType>

#include <atomic>
#include <chrono>

namespace Nodes {
class BasicAction;
class Result;
} // namespace Nodes

namespace Widgets {

/// Life of a queued action.
enum enActionState {
    ActionCreated = 1,    ///< waits in the queue
    ActionHandedOver = 2, ///< on its way to the GUI thread
    ActionExecuting = 3,
    ActionFinished = 4 ///< to be deleted by the worker thread
};

/// One run of an operator action. Made and deleted on any thread, so neither constructors nor
/// destructors of the family touch anything of the GUI; Execute runs on the GUI thread only.
class WIDGETS_EXPORT qBasicAction
{
public:
    /// `node` is a detached copy that the window manager owns and frees after this object; null
    /// for actions without configuration.
    explicit qBasicAction(Nodes::BasicAction *node);
    qBasicAction(const qBasicAction &other);
    qBasicAction &operator=(const qBasicAction &other);
    virtual ~qBasicAction();

    virtual void Execute();

    enActionState GetState() const { return m_state.load(std::memory_order_acquire); }
    void setState(enActionState const &state) { m_state.store(state, std::memory_order_release); }
    Nodes::BasicAction *getNode() const { return m_node; }

    using Clock = std::chrono::steady_clock;
    /// When the operator (or whoever asked) triggered it.
    Clock::time_point createdAt() const { return m_createdAt; }

    const ActionTrigger &trigger() const { return m_trigger; }
    /// Before it is queued.
    void setTrigger(const ActionTrigger &trigger) { m_trigger = trigger; }
    /// Its list is no longer waited for.
    void noteStart() { m_trigger.waiting.reset(); }

    /// It waits for the operator in a loop of events of its own, a menu or dialog, and takes no
    /// time of the others.
    bool isWaiting() const { return m_isWaiting.load(std::memory_order_relaxed); }
    void setWaiting() { m_isWaiting.store(true, std::memory_order_relaxed); }

protected:
    /// The node copy as its own kind; null when it is another one.
    template <class Kind> Kind *nodeAs() const { return dynamic_cast<Kind *>(m_node); }
    /// 0-based display that `display` (0: where the action was triggered; n: display n) means.
    int targetDisplay(int display) const;
    /// What is done while the result lives is done with the rights and in the name of whoever
    /// triggered the action.
    [[nodiscard]] Nodes::ActingScope act() const;
    /// Entry of the system event journal with the source "System".
    void log(const char *text) const;
    /// Tells whoever triggered it why it was not done, and journals what the node model does not:
    /// that there was nothing to do it with.
    void report(const Nodes::Result &result) const;

private:
    Nodes::BasicAction *m_node;
    std::atomic<enActionState> m_state{ActionCreated};
    Clock::time_point m_createdAt = Clock::now();
    std::atomic<bool> m_isWaiting{false};
    ActionTrigger m_trigger;
};

} // namespace Widgets

Q_DECLARE_METATYPE(Widgets::qBasicAction *)
