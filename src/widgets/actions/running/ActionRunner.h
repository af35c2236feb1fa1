#pragma once

#include "widgets/WidgetsExport.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QObject>

#include <array>
#include <deque>

class QTimer;

namespace Widgets {

class qBasicAction;
struct ActionTrigger;

/// Executes the actions that were handed over: what is urgent first, each kind in its
/// order, a few milliseconds in one turn of the event loop, so that input and painting come
/// between. A menu or dialog of one action stops no other. GUI thread.
class WIDGETS_EXPORT ActionRunner : public QObject
{
    Q_OBJECT

public:
    explicit ActionRunner(QObject *parent);
    ~ActionRunner() override;

    /// Executes the action (state 2) now or, where that is not its turn, by and by.
    void take(qBasicAction &action);
    /// Nothing taken waits.
    bool isIdle() const { return m_ready[0].empty() && m_ready[1].empty(); }

    /// The action whose doing it is when something is pushed now; null outside of actions and
    /// after input of the operator in a dialog or menu of the action.
    const qBasicAction *cause() const { return m_hasInput ? nullptr : m_executing; }
    void noteInput() { m_hasInput = true; }

    /// Lets pending events run, but neither input nor further actions. What was handed over
    /// meanwhile runs afterwards, in order.
    void letEventsRun();

    /// The station ends: from now on only what outlives it is executed, and after that time only
    /// what ends a press.
    void end(const QDeadlineTimer &deadline);
    bool isEnding() const { return m_isEnding; }
    /// How many were not executed because of that.
    int dropped() const { return m_dropped; }

private:
    using Lane = std::deque<qBasicAction *>;

    static int laneOf(const qBasicAction &action);
    bool isHeldBack(const qBasicAction &action) const;
    void takeHeldBack();
    void abandonPress(const ActionTrigger &release);
    bool isTurnOf(int lane);
    void execute(qBasicAction &action);
    bool isDropped(const qBasicAction &action) const;
    bool isLettingEventsRun() const;
    bool isTurnSpent();
    qBasicAction *takeNext();
    void runReady();
    void postNext();

    std::array<Lane, 2> m_ready; // the urgent first
    Lane m_heldBack;             // in order; what their lists wait for is not answered yet
    int m_lettingLevel = -1;     // of event loops, where events are let run now
    bool m_isNextPosted = false;
    bool m_isTurnOpen = false;
    QElapsedTimer m_turn;
    QTimer *m_retry;                     // for a modal window opened while events are let run
    qBasicAction *m_executing = nullptr; // the innermost
    bool m_hasInput = false;             // while that one ran: what follows is the operator's doing
    bool m_isEnding = false;
    QDeadlineTimer m_deadline;
    int m_dropped = 0;
};

} // namespace Widgets
