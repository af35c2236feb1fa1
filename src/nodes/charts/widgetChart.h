#pragma once

#include "nodes/values/Connection.h"
#include "nodes/values/SlotList.h"
#include "nodes/visual/elements/BasicFramedWidget.h"

#include <functional>
#include <string>
#include <vector>

namespace Nodes {

/// What every chart has: groups of series, of which it shows one, and how it presents itself.
class NODES_EXPORT widgetChart : public BasicFramedWidget
{
public:
    struct Prop : BasicFramedWidget::Prop
    {
        static constexpr PropertyId<int> Group{12301, "group"};
        static constexpr PropertyId<int> Symbol{12302, "symbol"};
        static constexpr PropertyId<int> SymbolSize{12303, "symbolSize"};
        static constexpr PropertyId<bool> ToolBar{12304, "toolBar"};
        static constexpr PropertyId<bool> Legend{12305, "legend"};
        static constexpr PropertyId<std::string> LegendColumns{12306, "legendColumns"};
        static constexpr PropertyId<bool> Marks{12307, "marks"};
    };

    /// Symbols drawn at the samples; codes are those of the plotting library's symbols.
    enum enSymbol {
        SymbolNone = -1,
        SymbolEllipse = 0,
        SymbolRect = 1,
        SymbolDiamond = 2,
        SymbolTriangle = 3,
        SymbolCross = 8,
        SymbolXCross = 9
    };

    /// The groups, in the order of the tree.
    NodeLinks GetGroups() const;
    /// Index of the group that is shown: the one chosen last, at first the configured one.
    int currentGroupTab() const { return m_shownGroup < 0 ? m_group : m_shownGroup; }
    /// Chooses another one while the chart is shown, which is not saved; told to the subscribers.
    void SetCurrentGroupTab(int index);

    int GetTypeSymbol() const { return m_shownSymbol < SymbolNone ? m_symbol : m_shownSymbol; }
    /// Likewise.
    void SetTypeSymbol(int symbol);
    /// Pixels.
    int GetSymbolSize() const { return m_symbolSize; }
    bool GetShowToolBar() const { return m_showsToolBar; }
    bool GetShowLegend() const { return m_showsLegend; }
    /// Tokens of the legend's columns, in order: "visible color name cursor value minimum maximum
    /// unit axis". Unknown ones are reported by validation.
    std::vector<std::string> GetLegendColumns() const;
    /// Events and alarms of the signals are marked on the time axis.
    bool GetShowMarks() const { return m_showsMarks; }

    using IndexSlot = std::function<void(int)>;
    /// Any thread; called on the GUI thread.
    Connection ConnectCurrentGroupChanged(IndexSlot slot);
    Connection ConnectSymbolsChanged(IndexSlot slot);

    void Validate(ValidationResults &results) const override;

protected:
    widgetChart();
    static void Describe(KindBuilder &builder);
    friend class KindBuilder;
    void OnPropertyChanged(const PropertyDescriptor &descriptor) override;

private:
    int m_group = 0;
    int m_symbol = SymbolNone;
    int m_symbolSize = 7;
    bool m_showsToolBar = true;
    bool m_showsLegend = true;
    bool m_showsMarks = true;
    std::string m_legendColumns = "visible color name cursor value unit";
    int m_shownGroup = -1;              // run-time state; -1: as configured
    int m_shownSymbol = SymbolNone - 1; // likewise
    SlotList<int> m_groupChanged;
    SlotList<int> m_symbolsChanged;
};

} // namespace Nodes
