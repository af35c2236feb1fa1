#pragma once

#include "widgets/charts/plots/Plot.h"

#include "nodes/archive/SignalHistoryResponse.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/values/Connection.h"
#include "nodes/values/Result.h"
#include "utils/relay/QueueRelay.h"

#include <atomic>
#include <memory>
#include <optional>
#include <utility>

namespace Nodes {
struct HistoryAnswer;
} // namespace Nodes

Q_DECLARE_METATYPE(std::vector<Nodes::SignalHistoryResponse>)

namespace Widgets {

class HeldCurves;

/// Plot whose curves begin in the archive: asks for what the window shows, merges the answer with
/// the live values, and either follows the present or stays where the operator put it. One request
/// counts at a time, the newest. GUI thread.
class WIDGETS_EXPORT PlotHistory : public Plot
{
    Q_OBJECT

public:
    PlotHistory(Nodes::widgetChartHistory *chart, int number, QWidget *parent);
    ~PlotHistory() override;

    /// X values in whole milliseconds; `to` 0: the present. Empties the curves, asks, and while the
    /// plot is visible waits with the wait box until the answer is merged. Success without asking
    /// where there is no archive to ask or nothing is at work.
    virtual Nodes::Result getHistory(unsigned long long from, unsigned long long to);
    /// Of the window and a tenth of its width to either side.
    Nodes::Result getCurrentHistory();

    /// Shows that window; the length is what the operator reads of it.
    void setXAxisParams(unsigned long long from, unsigned long long to, int length,
                        Nodes::widgetChartAxis::enRangeUnit unit);
    /// Milliseconds until a request is given up, and said so.
    void setAnswerLimit(int milliseconds);

public slots:
    void setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes) override;
    void onTrackingChanged(bool on) override;
    void onActionPeriodPrev() override;
    void onActionPeriodNext() override;
    void onActionLengthX() override;
    void onPanned() override;
    void updateGroup() override;
    /// What a stop has cancelled is asked again.
    void onActive(bool on) override;
    void onUserChanged() override;
    virtual void onGetHistoryCompleted(std::vector<Nodes::SignalHistoryResponse> answer);

signals:
    void getHistoryCompleted(std::vector<Nodes::SignalHistoryResponse> answer);

protected:
    /// Requests what following (0) or a step of one window back (-1) or forth (1) makes visible.
    void getLastHistory(bool isEnabled, int direction);
    void forgetSeries() override;
    void onValuesLost() override;

    /// Takes the length that the operator chose.
    void setLength(int length, Nodes::widgetChartAxis::enRangeUnit unit);

private:
    /// What the history's thread hands over: of which request, what went wrong, the samples.
    struct Answer
    {
        unsigned request = 0;
        std::shared_ptr<const Nodes::HistoryAnswer> whole;
        std::vector<Nodes::SignalHistoryResponse> samples;
    };
    using Span = std::pair<unsigned long long, unsigned long long>;

    Nodes::widgetChartAxis *getXAxis() const;
    void removeAllSeriesData();
    Nodes::Result ask(unsigned long long from, unsigned long long to);
    void waitForAnswer();
    void giveUp();
    /// Once the event of now has been handled; nothing for the span: that of the window of then.
    void schedule(std::optional<Span> span);
    void onScheduled();
    void onAnswers(std::vector<Answer> answers);
    void addMissing(ISerie &serie, const std::vector<Nodes::SignalHistoryResponse> &answer);
    /// Puts what came live before the curves were emptied, and later than `archived`, into them.
    void addKept(ISerie &serie, double archived, bool isReplaced);
    void onClock();
    void onAxisMoved(QwtAxisId axis, double from, double to);
    void onAxisReleased(QwtAxisId axis);
    void onAxisTaken(QwtAxisId axis);
    void zoomWindow(double from, double to);

    Utils::WatchedNode<Nodes::widgetChartHistory> m_history;
    std::unique_ptr<HeldCurves> m_held;
    std::shared_ptr<std::atomic<unsigned>> m_request; // number of the newest one
    bool m_isAggregated = false; // points of the last answer stand for several samples
    bool m_isEmptied = false;    // the answer to the newest request has not been merged
    bool m_isOwed = false;       // nor will it be, without asking again
    QTimer m_scheduled;
    std::optional<Span> m_span;
    QTimer m_clock;
    QwtInterval m_taken;     // the window before the operator moved it by its scale
    double m_zoom = 1;       // of movements that are no step yet
    double m_askedWidth = 0; // of the newest request, ms
    std::unique_ptr<Utils::QueueRelay<Answer>> m_answers;
    Nodes::ScopedConnection m_connection; // ends before what it fills
};

} // namespace Widgets
