#pragma once

#include "nodes/charts/SerieSamples.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/visual/BasicWidget.h"

namespace Nodes {

class BasicSignal;
class KindBuilder;
class archiverSourceConnector;
class widgetChartAxis;

/// A signal drawn on a chart: what of, how, and on which axis.
class NODES_EXPORT widgetChartBasicSerie : public ConfigNode
{
public:
    struct Prop
    {
        static constexpr PropertyId<NodeLink> Signal = BasicWidget::Prop::Signal;
        static constexpr PropertyId<NodeLink> Source{12351, "source"};
        static constexpr PropertyId<std::string> Text = CaptionProp::Text;
        static constexpr PropertyId<NColor> Color = TextProp::Color;
        static constexpr PropertyId<int> Thickness{12352, "thickness"};
        static constexpr PropertyId<int> Style{12353, "style"};
        static constexpr PropertyId<NodeLink> AxisY{12354, "axisY"};
        static constexpr PropertyId<int> PlotArea{12355, "plotArea"};
        static constexpr PropertyId<double> OffsetY{12356, "offsetY"};
        static constexpr PropertyId<bool> Live{12357, "live"};
        static constexpr PropertyId<bool> Visible = BasicWidget::Prop::Visible;
    };

    /// How neighbouring samples are joined.
    enum enStyle { Lines = 0, Sticks = 1, Steps = 2, Dots = 3 };

    /// Of the series itself, or that of its archive source; null when there is neither.
    BasicSignal *GetSignal() const;
    /// Null without one.
    archiverSourceConnector *GetSource() const;
    /// What the series refers to, in the order of its properties; links that lead nowhere too.
    virtual NodeLinks GetLinks() const;
    /// The signals that it shows, its own first, each once.
    std::vector<BasicSignal *> GetSignals() const;
    /// Appends the signals whose history the series shows.
    virtual void CollectArchived(NodeLinks &archived) const;

    /// Its own text, else the signal's name.
    std::string GetText() const;
    NColor GetPenColor() const { return m_color; }
    /// Pixels.
    int GetThickness() const { return m_thickness; }
    enStyle GetStyle() const { return enStyle(m_style); }
    /// Null: the first Y axis of the group.
    widgetChartAxis *GetAxisY() const;
    int GetPlotAreaNo() const { return m_plotArea; }
    /// Added to every value.
    float GetOffsetY() const { return float(m_offsetY); }
    bool isLive() const { return m_isLive; }
    bool isVisible() const { return m_isVisible; }
    /// Of the signal; "" and 1 without one.
    std::string GetUnit() const;
    int GetDecimals() const;
    /// A rule forbids the current user to view one of the signals: neither values nor history come.
    bool IsForbidden() const;

    /// Every sample of the signal from now on, the present one first; see SerieSamples. Nothing
    /// comes of a signal that the user may not view: to be connected anew when he changes. GUI
    /// thread.
    Connection ConnectValues(SerieSamples::Slot slot) const;

    void Validate(ValidationResults &results) const override;

protected:
    widgetChartBasicSerie() = default;
    explicit widgetChartBasicSerie(enStyle style) : m_style(style) {}
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    /// What the links of a second or third signal give.
    static Connection ConnectSignal(const BasicSignal *signal, SerieSamples::Slot slot);
    /// Reports a link to no signal.
    void ValidateSignal(ValidationResults &results, const NodeLink &link, const char *what) const;

private:
    NodeLink m_signal;
    NodeLink m_source;
    std::string m_text;
    NColor m_color{60, 96, 140};
    int m_thickness = 2;
    int m_style = Lines;
    NodeLink m_axisY;
    int m_plotArea = 1;
    double m_offsetY = 0;
    bool m_isLive = true;
    bool m_isVisible = true;
};

} // namespace Nodes
