#pragma once

#include "widgets/charts/series/qwidgetChartBasicSerie.h"

#include <memory>

namespace Nodes {
class widgetChartDiscretSerie;
}

namespace Widgets {

class DiscretBaseLine;
class DiscretCaption;
class DiscretFill;

/// On and off of one signal in a band of its own: off at the Y offset, on one above. What is not
/// zero is on. Those of a group on one axis are stacked, the first on top, unless their nodes give
/// offsets. GUI thread.
class WIDGETS_EXPORT qwidgetChartDiscretSerie : public qwidgetChartBasicSerie
{
    Q_OBJECT

public:
    qwidgetChartDiscretSerie(Nodes::widgetChartDiscretSerie *node, QObject *parent);
    ~qwidgetChartDiscretSerie() override;

    void attachToPlot(QwtPlot *plot) override;
    /// Forgets what it held before it takes the answer.
    void updateArchPoints(const std::vector<Nodes::SignalHistoryResponse> &answer) override;
    bool isReplacedByAnswers() const override { return true; }
    void updateLabel(const QPointF &last) override;
    void setVisible(bool isVisible) override;

    /// Name and present state.
    QString caption() const;

protected:
    bool marksBad() const override { return false; } // the band is hatched
    float offsetOf(const Nodes::widgetChartBasicSerie &node) const override;
    CurveStyle styleOf(const Nodes::widgetChartBasicSerie &node) const override;
    double drawn(double number) const override;
    void takeAxes(const Nodes::widgetChartBasicSerie &node) override;
    QString textOf(const Nodes::SignalValue &value) const override;

private:
    std::unique_ptr<DiscretFill> m_fill;
    std::unique_ptr<DiscretBaseLine> m_baseLine;
    std::unique_ptr<DiscretCaption> m_caption;
};

} // namespace Widgets
