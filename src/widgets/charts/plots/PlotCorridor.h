#pragma once

#include "widgets/charts/plots/PlotHistory.h"

namespace Nodes {
class widgetChartCorridor;
}

namespace Widgets {

class qwidgetChartCorridorSerie;

/// Trend of tubes, with the length of their slices on the tool bar. GUI thread.
class WIDGETS_EXPORT PlotCorridor : public PlotHistory
{
    Q_OBJECT

public:
    PlotCorridor(Nodes::widgetChartCorridor *chart, int number, QWidget *parent);
    ~PlotCorridor() override;

    /// Length of a slice as the tool bar tells it; "-" where there are none.
    static QString sliceText(double milliseconds);

public slots:
    void onUpdateProperties() override;
    void updateGroup() override;
    void onUserChanged() override;
    void onGetHistoryCompleted(std::vector<Nodes::SignalHistoryResponse> answer) override;

protected:
    void forgetSeries() override;
    IPickerCanvas *makePicker() override;

private:
    QList<qwidgetChartCorridorSerie *> tubes() const;
    void setFollowing(bool on);
    void showSlice();
};

} // namespace Widgets
