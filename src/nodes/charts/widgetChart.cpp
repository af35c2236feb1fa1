#include "nodes/charts/widgetChart.h"

#include "nodes/charts/widgetChartGroup.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/validation/ValidationResults.h"

#include <algorithm>
#include <sstream>

namespace Nodes {

namespace {

constexpr const char *legendColumns[] = {"visible", "color",   "name", "cursor", "value",
                                         "minimum", "maximum", "unit", "axis"};

bool isLegendColumn(const std::string &token)
{
    return std::find(std::begin(legendColumns), std::end(legendColumns), token) !=
           std::end(legendColumns);
}

} // namespace

widgetChart::widgetChart() : BasicFramedWidget(NColor(238, 240, 242), 1) {}

void widgetChart::Describe(KindBuilder &builder)
{
    builder.Inherit<BasicFramedWidget>()
        .Property<&widgetChart::m_group>(Prop::Group, "Group shown first", "Начальная группа")
        .Range(0, 1000)
        .Property<&widgetChart::m_symbol>(Prop::Symbol, "Symbol", "Знак точки")
        .Choice(SymbolNone, "none", "Нет")
        .Choice(SymbolEllipse, "ellipse", "Круг")
        .Choice(SymbolRect, "rect", "Квадрат")
        .Choice(SymbolDiamond, "diamond", "Ромб")
        .Choice(SymbolTriangle, "triangle", "Треугольник")
        .Choice(SymbolCross, "cross", "Крест")
        .Choice(SymbolXCross, "xCross", "Косой крест")
        .Property<&widgetChart::m_symbolSize>(Prop::SymbolSize, "Symbol size", "Размер знака")
        .Range(1, 64)
        .Property<&widgetChart::m_showsToolBar>(Prop::ToolBar, "Tool bars", "Панели инструментов")
        .Property<&widgetChart::m_showsLegend>(Prop::Legend, "Legend", "Легенда")
        .Property<&widgetChart::m_legendColumns>(Prop::LegendColumns, "Legend columns",
                                                 "Столбцы легенды")
        .Choice(0, "visible", "Видимость")
        .Choice(1, "color", "Цвет")
        .Choice(2, "name", "Название")
        .Choice(3, "cursor", "Значение у курсора")
        .Choice(4, "value", "Текущее значение")
        .Choice(5, "minimum", "Минимум")
        .Choice(6, "maximum", "Максимум")
        .Choice(7, "unit", "Единица измерения")
        .Choice(8, "axis", "Ось")
        .Property<&widgetChart::m_showsMarks>(Prop::Marks, "Event marks", "Отметки событий")
        .Children({NodeType(widgetChartGroup::Code)});
}

NodeLinks widgetChart::GetGroups() const
{
    NodeLinks groups;
    for (const auto &child : Children()) {
        if (dynamic_cast<const widgetChartGroup *>(child.get()))
            groups.push_back(child->GetNodeLink());
    }
    return groups;
}

std::vector<std::string> widgetChart::GetLegendColumns() const
{
    std::istringstream words(m_legendColumns);
    std::vector<std::string> tokens;
    for (std::string token; words >> token;) {
        if (isLegendColumn(token))
            tokens.push_back(token);
    }
    return tokens;
}

void widgetChart::SetCurrentGroupTab(int index)
{
    if (index < 0 || index == currentGroupTab())
        return;
    m_shownGroup = index;
    m_groupChanged(index);
}

void widgetChart::SetTypeSymbol(int symbol)
{
    if (symbol < SymbolNone || symbol == GetTypeSymbol())
        return;
    m_shownSymbol = symbol;
    m_symbolsChanged(symbol);
}

Connection widgetChart::ConnectCurrentGroupChanged(IndexSlot slot)
{
    return m_groupChanged.Connect(std::move(slot));
}

Connection widgetChart::ConnectSymbolsChanged(IndexSlot slot)
{
    return m_symbolsChanged.Connect(std::move(slot));
}

void widgetChart::OnPropertyChanged(const PropertyDescriptor &descriptor)
{
    BasicFramedWidget::OnPropertyChanged(descriptor);
    if (descriptor.valueId == Prop::Group) {
        m_shownGroup = -1;
        m_groupChanged(m_group);
    } else if (descriptor.valueId == Prop::Symbol) {
        m_shownSymbol = SymbolNone - 1;
        m_symbolsChanged(m_symbol);
    }
}

void widgetChart::Validate(ValidationResults &results) const
{
    BasicFramedWidget::Validate(results);
    const int groups = int(GetGroups().size());
    if (groups == 0)
        results.Add(GetNodeLink(), Result(this, Result::NotFound, "chartGroup"),
                    "График «" + GetPath() + "»: нет ни одной группы. Добавьте группу с рядами.");
    else if (m_group >= groups)
        results.Add(GetNodeLink(), Result(this, Result::OutOfRange, "group"),
                    "График «" + GetPath() + "»: начальной группы с номером " +
                        std::to_string(m_group) + " нет, групп " + std::to_string(groups) + ".");
    std::istringstream words(m_legendColumns);
    for (std::string token; words >> token;) {
        if (!isLegendColumn(token))
            results.Add(GetNodeLink(), Result(this, Result::InvalidArgument, "legendColumns"),
                        "График «" + GetPath() + "»: столбец легенды «" + token +
                            "» неизвестен. Есть: visible color name cursor value minimum maximum "
                            "unit axis.");
    }
}

} // namespace Nodes
