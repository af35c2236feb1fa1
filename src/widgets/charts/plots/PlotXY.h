#pragma once

#include "widgets/charts/plots/Plot.h"

#include "nodes/values/Connection.h"
#include "utils/relay/QueueRelay.h"

#include <atomic>

namespace Nodes {
struct HistoryAnswer;
class widgetChartAxis;
class widgetChartXY;
} // namespace Nodes

namespace Widgets {

class qwidgetChartXYSerie;

/// Plot of signals over signals: what was within the last stretch of time, from the archive and
/// live. How long that is, the first X axis of the group tells, or one of time beside it. Curves
/// stay while the archive is asked, so nobody has to wait. GUI thread.
class WIDGETS_EXPORT PlotXY : public Plot
{
    Q_OBJECT

public:
    PlotXY(Nodes::widgetChartXY *chart, int number, QWidget *parent);
    ~PlotXY() override;

    /// Asks for the whole stretch; success without asking where there is no archive to ask or
    /// nothing is at work.
    Nodes::Result getHistory();
    /// Milliseconds of the past that are shown.
    double length() const;
    /// The same as an operator reads it: "1 ч".
    QString lengthText() const;

public slots:
    void onUpdateProperties() override;
    void setAxes(const Nodes::NodesContainer &yAxes, const Nodes::NodesContainer &xAxes) override;
    void updateGroup() override;
    void onUserChanged() override;
    /// Time is no axis of it: there is nothing to follow or to step.
    void onTrackingChanged(bool) override {}
    void onActionPeriodPrev() override {}
    void onActionPeriodNext() override {}
    /// Asks the operator how much of the past he wants to see.
    void onActionLengthX() override;

protected:
    void forgetSeries() override;
    IPickerCanvas *makePicker() override;

private:
    using Answer = std::pair<unsigned, std::shared_ptr<const Nodes::HistoryAnswer>>;

    /// The axis that tells the length; null: none does.
    Nodes::widgetChartAxis *lengthAxis() const;
    void showLength();
    QList<qwidgetChartXYSerie *> xySeries() const;
    void setFollowing(bool on);
    void askCurrent();
    void onAnswers(std::vector<Answer> answers);
    void onClock();

    Utils::WatchedNode<Nodes::widgetChartXY> m_xy;
    std::shared_ptr<std::atomic<unsigned>> m_request; // number of the newest one
    QTimer m_clock;
    Utils::QueueRelay<Answer> m_answers;
    Nodes::ScopedConnection m_connection; // ends before what it fills
};

} // namespace Widgets
