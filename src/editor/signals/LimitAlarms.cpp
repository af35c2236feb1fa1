#include "editor/signals/LimitAlarms.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/project/signals/SheetColumns.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Editor::LimitAlarms {

namespace {

std::string replaced(std::string text, const std::string &what, const std::string &by)
{
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// As it goes into a cell: a share of the range worked out, anything else as it was written.
/// Nothing when the range is not known.
std::optional<std::string> inUnits(const std::string &written, const Nodes::BasicSignal &signal,
                                   bool isSpan)
{
    const std::size_t sign = written.find('%');
    if (sign == std::string::npos)
        return written;
    const auto share =
        Nodes::ParseDouble(replaced(replaced(written.substr(0, sign), " ", ""), ",", "."));
    const double low = signal.GetMinimum();
    const double span = signal.GetMaximum() - low;
    if (!share || !std::isfinite(span) || span <= 0)
        return std::nullopt;
    const double value = (isSpan ? 0 : low) + span * *share / 100;
    return Nodes::FormatDouble(std::round(value * 1e6) / 1e6);
}

std::string textOf(const LimitAlarm &alarm, const Nodes::BasicSignal &signal,
                   const std::string &limit)
{
    const std::string &description = signal.GetDescription();
    std::string shown = limit;
    std::replace(shown.begin(), shown.end(), '.', ',');
    std::string text =
        replaced(alarm.text, "{описание}", description.empty() ? signal.GetName() : description);
    text = replaced(text, "{имя}", signal.GetName());
    text = replaced(text, "{предел}", shown);
    return replaced(text, "{единица}", signal.GetUnit());
}

} // namespace

Nodes::TextTable makeTable(const Nodes::ConfigNode &scope, const Nodes::NodeLinks &nodes,
                           const std::vector<LimitAlarm> &alarms, const std::string &deadband,
                           int delay, std::vector<Nodes::SheetRefusal> &refusals)
{
    Nodes::TextTable table{
        {"Имя", "Вид", "type", "limit", "deadband", "onDelay", "priority", "text"}};
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(nodes[i].GetNode());
        if (!signal)
            continue;
        const std::string path = Nodes::SheetColumns::PathFrom(scope, *signal);
        const auto zone = inUnits(deadband, *signal, true);
        for (const LimitAlarm &alarm : alarms) {
            const auto limit = inUnits(alarm.limit, *signal, false);
            if (!limit || !zone) {
                refusals.push_back({i + 1, "Предел", path,
                                    "доля диапазона не считается: у сигнала нет нижнего и верхнего "
                                    "пределов; впишите их или задайте уставку числом"});
                continue;
            }
            table.push_back({path + "/" + alarm.type, "alarmLimit", alarm.type, *limit, *zone,
                             std::to_string(delay), alarm.priority,
                             textOf(alarm, *signal, *limit)});
        }
    }
    return table;
}

} // namespace Editor::LimitAlarms
