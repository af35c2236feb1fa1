#pragma once

#include "nodes/model/ConfigNode.h"
#include "nodes/model/properties/PropertyId.h"
#include "nodes/values/NColor.h"
#include "nodes/visual/SharedProperties.h"

#include <optional>

namespace Nodes {

class KindBuilder;

/// An axis of a chart's group: where it stands, its scale and its look. Several may stand on one
/// side; the first of the group's is nearest to the curves.
class NODES_EXPORT widgetChartAxis : public ConfigNode
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x18001);
    struct Prop
    {
        static constexpr PropertyId<int> Position{12331, "position"};
        static constexpr PropertyId<std::string> Format{12332, "labelFormat"};
        static constexpr PropertyId<std::string> Title{12333, "axisTitle"};
        static constexpr PropertyId<double> Minimum{12334, "from"};
        static constexpr PropertyId<double> Maximum{12335, "to"};
        static constexpr PropertyId<bool> AutoScale{12336, "autoScale"};
        static constexpr PropertyId<bool> Logarithmic{12337, "logarithmic"};
        static constexpr PropertyId<double> Length{12338, "length"};
        static constexpr PropertyId<int> LengthUnit{12339, "lengthUnit"};
        static constexpr PropertyId<double> MaxLength{12340, "maxLength"};
        static constexpr PropertyId<int> MaxLengthUnit{12341, "maxLengthUnit"};
        static constexpr PropertyId<bool> Visible{12097, "visible"};
        static constexpr PropertyId<NColor> Color{12230, "color"};
        static constexpr PropertyId<int> FontSize{12211, "fontSize"};
    };

    enum enPosition { PositionLeft = 0, PositionRight = 1, PositionBottom = 2, PositionTop = 3 };
    /// Any code that a caller has is held, so that one of no unit can be told.
    enum enRangeUnit : int { RangeSeconds = 1, RangeMinutes = 2, RangeHours = 3, RangeDays = 4 };

    widgetChartAxis() = default;
    static KindInfo Kind();

    enPosition GetPosition() const { return enPosition(m_position); }
    bool IsX() const { return m_position == PositionBottom || m_position == PositionTop; }
    bool isVisible() const { return m_isVisible; }
    /// Of labels and title.
    NColor GetColor() const { return m_color; }
    /// Pixels.
    int GetFontSize() const { return m_fontSize; }
    const std::string &GetTitle() const { return m_title; }
    /// Of the labels: printf's for values, Qt's for times; "" leaves it to the axis.
    const std::string &GetFormat() const { return m_format; }
    /// Ends of the scale while it is not automatic.
    double GetMinimum() const { return m_minimum; }
    double GetMaximum() const { return m_maximum; }
    bool IsAutoScale() const { return m_isAutoScale; }
    bool IsLogarithmic() const { return m_isLogarithmic; }

    /// Length of the window of a time axis: as configured, or as the operator chose it, which is
    /// not saved.
    double GetRangeLength() const { return m_shownLength.value_or(m_length); }
    void SetRangeLength(double length) { m_shownLength = length; }
    enRangeUnit GetRangeUnit() const { return m_shownUnit.value_or(enRangeUnit(m_lengthUnit)); }
    void SetRangeUnit(enRangeUnit unit) { m_shownUnit = unit; }
    double GetMaxRangeLength() const { return m_maxLength; }
    enRangeUnit GetMaxRangeUnit() const { return enRangeUnit(m_maxLengthUnit); }
    /// 0 for a unit that is none.
    static double Milliseconds(double length, enRangeUnit unit);

    void Validate(ValidationResults &results) const override;

protected:
    explicit widgetChartAxis(enPosition position) : m_position(position) {}
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    int m_position = PositionLeft;
    bool m_isVisible = true;
    NColor m_color{48, 52, 56};
    int m_fontSize = 14;
    std::string m_title;
    std::string m_format;
    double m_minimum = 0;
    double m_maximum = 100;
    bool m_isAutoScale = false;
    bool m_isLogarithmic = false;
    double m_length = 10;
    int m_lengthUnit = RangeMinutes;
    double m_maxLength = 366;
    int m_maxLengthUnit = RangeDays;
    std::optional<double> m_shownLength;
    std::optional<enRangeUnit> m_shownUnit;
};

} // namespace Nodes
