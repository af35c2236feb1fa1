#include "widgets/charts/plots/AxisLength.h"

#include "widgets/dialogs/DialogFrames.h"
#include "widgets/dialogs/Dialogs.h"

#include "nodes/charts/widgetChartAxis.h"

namespace Widgets::AxisLength {

std::optional<TimeDialog::Time> ask(const Nodes::widgetChartAxis &axis)
{
    const OwnedDialog<TimeDialog> dialog;
    dialog->setTime(axis.GetRangeLength(), axis.GetRangeUnit());
    dialog->setMaxRange(axis.GetMaxRangeLength(), axis.GetMaxRangeUnit());
    dialog->setWindowTitle(QStringLiteral("Выбор ширины интервала"));
    const bool isChosen = DialogFrames::exec(*dialog) == QDialog::Accepted;
    return isChosen && dialog ? std::optional(dialog->getTime()) : std::nullopt;
}

} // namespace Widgets::AxisLength
