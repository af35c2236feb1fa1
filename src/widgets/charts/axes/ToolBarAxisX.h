#pragma once

#include "widgets/charts/axes/ToolBar.h"

namespace Widgets {

/// Following the present, stepping and the length of the window of a time axis.
class WIDGETS_EXPORT ToolBarAxisX : public ToolBar
{
    Q_OBJECT

public:
    ToolBarAxisX(Nodes::widgetChart *chart, QWidget *parent);

    bool tracking() const;
    /// Also tells of it when it was so already.
    void setTracking(bool on);
    /// Shows the length of the first axis.
    void updateLenghtXTitle();
    void onUpdateProperties() override;

signals:
    void trackingChanged(bool on);
    void actionLengthX();
    void actionPeriodPrev();
    void actionPeriodNext();

protected:
    std::vector<Nodes::widgetChartAxis *> axes() const override { return groupAxes(true); }

private:
    QAction *m_tracking;
    QAction *m_length;
    QAction *m_previous;
    QAction *m_next;
};

} // namespace Widgets
