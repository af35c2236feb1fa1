#include "widgets/charts/plots/AxisLength.h"

#include "widgets/dialogs/DialogFrames.h"
#include "widgets/dialogs/Dialogs.h"

#include "nodes/charts/widgetChartAxis.h"

#include <algorithm>
#include <iterator>

namespace Widgets::AxisLength {

namespace {

using Axis = Nodes::widgetChartAxis;
using Time = TimeDialog::Time;

// A trend is not worth looking at for less than the first.
constexpr Time readable[] = {
    {5, Axis::RangeSeconds},  {10, Axis::RangeSeconds}, {20, Axis::RangeSeconds},
    {30, Axis::RangeSeconds}, {1, Axis::RangeMinutes},  {2, Axis::RangeMinutes},
    {5, Axis::RangeMinutes},  {10, Axis::RangeMinutes}, {20, Axis::RangeMinutes},
    {30, Axis::RangeMinutes}, {1, Axis::RangeHours},    {2, Axis::RangeHours},
    {4, Axis::RangeHours},    {8, Axis::RangeHours},    {12, Axis::RangeHours},
    {1, Axis::RangeDays},     {2, Axis::RangeDays},     {3, Axis::RangeDays},
    {7, Axis::RangeDays},     {14, Axis::RangeDays},    {31, Axis::RangeDays},
    {92, Axis::RangeDays},    {183, Axis::RangeDays},   {366, Axis::RangeDays},
};
constexpr double same = 0.01; // of a length: as good as it

double milliseconds(const Time &time)
{
    return Axis::Milliseconds(time.count, time.unit);
}

} // namespace

std::optional<TimeDialog::Time> ask(const Nodes::widgetChartAxis &axis)
{
    const OwnedDialog<TimeDialog> dialog;
    dialog->setTime(axis.GetRangeLength(), axis.GetRangeUnit());
    dialog->setMaxRange(axis.GetMaxRangeLength(), axis.GetMaxRangeUnit());
    dialog->setWindowTitle(QStringLiteral("Выбор ширины интервала"));
    const bool isChosen = DialogFrames::exec(*dialog) == QDialog::Accepted;
    return isChosen && dialog ? std::optional(dialog->getTime()) : std::nullopt;
}

std::optional<Time> stepped(double length, bool isLonger, const Axis &axis)
{
    const double most = Axis::Milliseconds(axis.GetMaxRangeLength(), axis.GetMaxRangeUnit());
    const auto isLongerOne = [&](const Time &time) {
        return milliseconds(time) > length * (1 + same);
    };
    const auto isShorterOne = [&](const Time &time) {
        return milliseconds(time) < length * (1 - same);
    };
    if (isLonger) {
        const auto *found = std::find_if(std::begin(readable), std::end(readable), isLongerOne);
        const bool isAllowed =
            found != std::end(readable) && (!(most > 0) || milliseconds(*found) <= most);
        return isAllowed ? std::optional(*found) : std::nullopt;
    }
    const auto found = std::find_if(std::rbegin(readable), std::rend(readable), isShorterOne);
    return found != std::rend(readable) ? std::optional(*found) : std::nullopt;
}

} // namespace Widgets::AxisLength
