#pragma once

#include "nodes/charts/widgetChartBasicSerie.h"

namespace Nodes {

/// States of a contact over time, in a band of its own.
class NODES_EXPORT widgetChartDiscretSerie : public widgetChartBasicSerie
{
public:
    static constexpr auto Code = NodeType::enNodeSubtype(0xC003);
    struct Prop : widgetChartBasicSerie::Prop
    {
        static constexpr PropertyId<std::string> OnText = CaptionProp::OnText;
        static constexpr PropertyId<std::string> OffText = CaptionProp::OffText;
    };

    widgetChartDiscretSerie() : widgetChartBasicSerie(Steps) {}
    static KindInfo Kind();

    /// How the states are called.
    const std::string &GetOnText() const { return m_onText; }
    const std::string &GetOffText() const { return m_offText; }

private:
    std::string m_onText = "Вкл";
    std::string m_offText = "Откл";
};

} // namespace Nodes
