#pragma once

#include "nodes/model/properties/PropertyId.h"
#include "nodes/visual/AlarmMark.h"
#include "nodes/visual/elements/BasicTextWidget.h"

#include <limits>
#include <optional>

namespace Nodes {

/// A number as a bar on a scale, with warning and alarm zones and, if wanted, a set-point.
class NODES_EXPORT widgetBargraph : public BasicTextWidget
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0x15006);
    struct Prop : BasicTextWidget::Prop
    {
        static constexpr PropertyId<int> Orientation{12290, "orientation"};
        static constexpr PropertyId<double> Minimum{12291, "minimum"};
        static constexpr PropertyId<double> Maximum{12292, "maximum"};
        static constexpr PropertyId<bool> Scale{12293, "scale"};
        static constexpr PropertyId<bool> Value{12264, "value"};
        static constexpr PropertyId<NColor> BarColor{12265, "barColor"};
        static constexpr PropertyId<int> Zones{12266, "zones"};
        static constexpr PropertyId<NodeLink> SetPoint{12268, "setPoint"};
        static constexpr PropertyId<double> LowLow{12270, "lowLow"};
        static constexpr PropertyId<double> Low{12271, "low"};
        static constexpr PropertyId<double> High{12272, "high"};
        static constexpr PropertyId<double> HighHigh{12273, "highHigh"};
    };

    enum enOrientation { Vertical = 0, Horizontal = 1 };
    enum enZoneSource { ZonesOfAlarms = 0, ZonesOwn = 1, ZonesNone = 2 };

    widgetBargraph();
    static KindInfo Kind();

    enOrientation GetOrientation() const { return enOrientation(m_orientation); }
    /// Ends of the scale: own ones, else the signal's. An empty range is drawn without a bar.
    double GetMinimum() const { return ownsRange() ? m_minimum : signalEnd(true); }
    double GetMaximum() const { return ownsRange() ? m_maximum : signalEnd(false); }
    bool GetShowScale() const { return m_showsScale; }
    bool GetShowValue() const { return m_showsValue; }
    NColor GetBarColor() const { return m_barColor; }
    /// Of the signal's alarms, of this element, or none.
    LimitZones GetZones() const;
    /// Of the signal's alarms, of the value between this element's limits, or none.
    AlarmMark GetAlarmMark(const SignalValue &value) const;
    /// Nothing without a set-point signal; the marker has that signal's quality.
    std::optional<SignalValue> GetSetPoint() const;

    std::string GetUnit() const;
    /// Number with the signal's decimals and unit; dashes for a bad value.
    using BasicWidget::GetDisplayText;
    std::string GetDisplayText(const SignalValue &value) const override;

    void Validate(ValidationResults &results) const override;

protected:
    Result OnFirstStart() override;
    Result OnLastStop() override;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    bool ownsRange() const { return m_minimum < m_maximum; }
    double signalEnd(bool isLower) const;
    void followSetPoint();

    int m_orientation = Vertical;
    double m_minimum = 0;
    double m_maximum = 0;
    bool m_showsScale = true;
    bool m_showsValue = true;
    NColor m_barColor{92, 120, 144};
    int m_zoneSource = ZonesOfAlarms;
    double m_lowLow = -std::numeric_limits<double>::infinity();
    double m_low = -std::numeric_limits<double>::infinity();
    double m_high = std::numeric_limits<double>::infinity();
    double m_highHigh = std::numeric_limits<double>::infinity();
    NodeLink m_setPoint;
    ValueSubscription m_setPointValues; // only while started
};

} // namespace Nodes
