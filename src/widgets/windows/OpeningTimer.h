#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QObject>

#include <chrono>

namespace Widgets {

class WindowBasic;

/// Measures one opening of a window: from the operator's gesture to the first full paint and until
/// every element with a signal has a value, and logs both in "station.window.open". A child of the
/// window; deletes itself when done. GUI thread.
class WIDGETS_EXPORT OpeningTimer : public QObject
{
    Q_OBJECT

public:
    using Clock = std::chrono::steady_clock;

    /// Begins a measurement; one that is under way for that window keeps its build time only.
    static OpeningTimer *restart(WindowBasic &window, Clock::time_point triggered);
    /// The same for a window that was just built, beginning at `begun`.
    static OpeningTimer *startBuilt(WindowBasic &window, Clock::time_point begun);

    static constexpr int GiveUpAfter = 10000; ///< milliseconds to wait for values

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The whole window was painted, microseconds after the trigger.
    void painted(qint64 microseconds);
    /// Every value arrived, or the wait was given up with `missing` elements without one.
    void valuesLive(qint64 microseconds, int missing);

private:
    OpeningTimer(WindowBasic &window, Clock::time_point triggered);

    qint64 elapsed() const;
    void onPainted();
    void collectElements();
    void pollValues();

    WindowBasic &m_window;
    Clock::time_point m_triggered;
    qint64 m_buildTime = 0; // microseconds; 0 for a window that was only shown again
    Nodes::NodeLinks m_withoutValue;
};

} // namespace Widgets
