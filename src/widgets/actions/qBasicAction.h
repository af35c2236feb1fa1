#pragma once

#include "widgets/WidgetsExport.h"

#include <QMetaType>

#include <atomic>
#include <chrono>

namespace Nodes {
class BasicAction;
}

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

    /// How many actions, each pushed while another one ran, led to this one; 0 when the operator, a
    /// timer or a value did.
    int generation() const { return m_generation; }
    void setGeneration(int generation) { m_generation = generation; }

protected:
    /// The node copy as its own kind; null when it is another one.
    template <class Kind> Kind *nodeAs() const { return dynamic_cast<Kind *>(m_node); }
    /// 0-based display that `display` (0: where the action was triggered; n: display n) means.
    int targetDisplay(int display) const;
    /// Entry of the system event journal with the source "System".
    void log(const char *text) const;

private:
    Nodes::BasicAction *m_node;
    std::atomic<enActionState> m_state{ActionCreated};
    Clock::time_point m_createdAt = Clock::now();
    int m_generation = 0;
};

} // namespace Widgets

Q_DECLARE_METATYPE(Widgets::qBasicAction *)
