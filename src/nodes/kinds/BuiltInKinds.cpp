#include "nodes/kinds/BuiltInKinds.h"

#include "nodes/actions/kinds/actionArchiverDBMgr.h"
#include "nodes/actions/kinds/actionAuthUser.h"
#include "nodes/actions/kinds/actionChangeComposition.h"
#include "nodes/actions/kinds/actionChangeCompositionTemplate.h"
#include "nodes/actions/kinds/actionCloseWindow.h"
#include "nodes/actions/kinds/actionCreateEvent.h"
#include "nodes/actions/kinds/actionExecuteScript.h"
#include "nodes/actions/kinds/actionLaunchProcess.h"
#include "nodes/actions/kinds/actionNodeCommand.h"
#include "nodes/actions/kinds/actionOverrideCursor.h"
#include "nodes/actions/kinds/actionPlaySound.h"
#include "nodes/actions/kinds/actionReport.h"
#include "nodes/actions/kinds/actionRestoreCursor.h"
#include "nodes/actions/kinds/actionShowAlarms.h"
#include "nodes/actions/kinds/actionShowMenu.h"
#include "nodes/actions/kinds/actionShowProblems.h"
#include "nodes/actions/kinds/actionShowTrend.h"
#include "nodes/actions/kinds/actionShowWindow.h"
#include "nodes/actions/kinds/actionShowWindowTemplate.h"
#include "nodes/actions/kinds/actionToggleWindow.h"
#include "nodes/actions/kinds/actionWriteValue.h"
#include "nodes/alarms/alarmBits.h"
#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/alarmDeviation.h"
#include "nodes/alarms/alarmDiscrete.h"
#include "nodes/alarms/alarmLimit.h"
#include "nodes/alarms/alarmQuality.h"
#include "nodes/alarms/alarmRate.h"
#include "nodes/alarms/systemAlarming.h"
#include "nodes/archive/archiverGroup.h"
#include "nodes/archive/archiverSourceConnector.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/auth/SecurityFindings.h"
#include "nodes/auth/currentUser.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityRole.h"
#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/charts/widgetChartAxis.h"
#include "nodes/charts/widgetChartCorridor.h"
#include "nodes/charts/widgetChartCorridorSerie.h"
#include "nodes/charts/widgetChartDiscretSerie.h"
#include "nodes/charts/widgetChartGroup.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/charts/widgetChartHistorySerie.h"
#include "nodes/charts/widgetChartTimeAxis.h"
#include "nodes/charts/widgetChartXY.h"
#include "nodes/charts/widgetChartXYSerie.h"
#include "nodes/charts/widgetChartZone.h"
#include "nodes/drivers/driverStatus.h"
#include "nodes/drivers/host/hostDriver.h"
#include "nodes/drivers/host/hostSignal.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/drivers/simulator/simulatorDriver.h"
#include "nodes/drivers/simulator/simulatorSignal.h"
#include "nodes/menus/BasicMenu.h"
#include "nodes/menus/BasicMenuItem.h"
#include "nodes/model/KindTable.h"
#include "nodes/reports/BasicReport.h"
#include "nodes/reports/ReportSignalInfo.h"
#include "nodes/reports/reportAlarms.h"
#include "nodes/reports/reportEvents.h"
#include "nodes/reports/reportSummary.h"
#include "nodes/reports/reportVariable.h"
#include "nodes/reports/schedule/reportSchedule.h"
#include "nodes/reports/time/shiftTable.h"
#include "nodes/serial/UnknownNode.h"
#include "nodes/signals/memorySignal.h"
#include "nodes/system/BasicFolder.h"
#include "nodes/system/BasicProject.h"
#include "nodes/system/BasicStation.h"
#include "nodes/system/systemVisualization.h"
#include "nodes/templates/compositionTemplate.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/templateParameter.h"
#include "nodes/templates/widgetInstance.h"
#include "nodes/templates/windowTemplate.h"
#include "nodes/texts/TextLanguage.h"
#include "nodes/timers/operationTimer.h"
#include "nodes/visual/elements/comboItem.h"
#include "nodes/visual/elements/recorderChannel.h"
#include "nodes/visual/elements/widgetAlarmBanner.h"
#include "nodes/visual/elements/widgetAlarmHealth.h"
#include "nodes/visual/elements/widgetAlarmList.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetCheckBox.h"
#include "nodes/visual/elements/widgetComboBox.h"
#include "nodes/visual/elements/widgetEditBox.h"
#include "nodes/visual/elements/widgetImage.h"
#include "nodes/visual/elements/widgetLabel.h"
#include "nodes/visual/elements/widgetMovingImage.h"
#include "nodes/visual/elements/widgetMultiImage.h"
#include "nodes/visual/elements/widgetMultiLabel.h"
#include "nodes/visual/elements/widgetRecorderDigitalDisplay.h"
#include "nodes/visual/elements/widgetReportDisplay.h"
#include "nodes/visual/elements/widgetState.h"
#include "nodes/visual/elements/widgetSymbol.h"
#include "nodes/visual/events/eventColumn.h"
#include "nodes/visual/events/widgetEventList.h"
#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "nodes/visual/windows/windowComposed.h"

namespace Nodes {

namespace {

void addElements(KindTable &table)
{
    table.Add(widgetLabel::Kind());
    table.Add(widgetMultiLabel::Kind());
    table.Add(widgetState::Kind());
    table.Add(widgetButton::Kind());
    table.Add(widgetImage::Kind());
    table.Add(widgetMultiImage::Kind());
    table.Add(widgetMovingImage::Kind());
    table.Add(widgetComboBox::Kind());
    table.Add(comboItem::Kind());
    table.Add(widgetCheckBox::Kind());
    table.Add(widgetEditBox::Kind());
    table.Add(widgetBargraph::Kind());
    table.Add(widgetRecorderDigitalDisplay::Kind());
    table.Add(recorderChannel::Kind());
    table.Add(widgetAlarmHealth::Kind());
    table.Add(widgetEventList::Kind());
    table.Add(eventColumn::Kind());
    table.Add(widgetAlarmBanner::Kind());
    table.Add(widgetAlarmList::Kind());
    table.Add(widgetReportDisplay::Kind());
    table.Add(widgetSymbol::Kind());
    table.Add(widgetInstance::Kind());
}

void addCharts(KindTable &table)
{
    table.Add(widgetChartHistory::Kind());
    table.Add(widgetChartXY::Kind());
    table.Add(widgetChartCorridor::Kind());
    table.Add(widgetChartGroup::Kind());
    table.Add(widgetChartAxis::Kind());
    table.Add(widgetChartTimeAxis::Kind());
    table.Add(widgetChartHistorySerie::Kind());
    table.Add(widgetChartDiscretSerie::Kind());
    table.Add(widgetChartXYSerie::Kind());
    table.Add(widgetChartCorridorSerie::Kind());
    table.Add(widgetChartZone::Kind());
}

void addReports(KindTable &table)
{
    table.Add(BasicReport::Kind());
    table.Add(ReportSignalInfo::Kind());
    table.Add(reportVariable::Kind());
    table.Add(reportSummary::Kind());
    table.Add(reportEvents::Kind());
    table.Add(reportAlarms::Kind());
    table.Add(reportSchedule::Kind());
    table.Add(shiftTable::Kind());
}

void addActions(KindTable &table)
{
    table.Add(actionAuthUser::Kind());
    table.Add(actionShowMenu::Kind());
    table.Add(actionShowWindow::Kind());
    table.Add(actionCloseWindow::Kind());
    table.Add(actionToggleWindow::Kind());
    table.Add(actionChangeComposition::Kind());
    table.Add(actionWriteValue::Kind());
    table.Add(actionArchiverDBMgr::Kind());
    table.Add(actionChangeCompositionTemplate::Kind());
    table.Add(actionCreateEvent::Kind());
    table.Add(actionExecuteScript::Kind());
    table.Add(actionLaunchProcess::Kind());
    table.Add(actionNodeCommand::Kind());
    table.Add(actionOverrideCursor::Kind());
    table.Add(actionPlaySound::Kind());
    table.Add(actionReport::Kind());
    table.Add(actionRestoreCursor::Kind());
    table.Add(actionShowAlarms::Kind());
    table.Add(actionShowProblems::Kind());
    table.Add(actionShowTrend::Kind());
    table.Add(actionShowWindowTemplate::Kind());
    table.Add(templateArgument::Kind());
}

} // namespace

void AddBuiltInKinds(KindTable &table)
{
    table.AddCheck(&FindSecurityGaps);
    table.SetTextCheck(&FindTextProblems);
    // System
    table.Add(UnknownNode::Kind());
    table.Add(BasicProject::Kind());
    table.Add(BasicStation::Kind());
    table.Add(BasicFolder::Kind());
    table.Add(systemVisualization::Kind());
    table.Add(systemAlarming::Kind());
    table.Add(systemArchiver::Kind());
    table.Add(systemAuthentication::Kind());
    table.Add(securityUser::Kind());
    table.Add(securityRole::Kind());
    table.Add(securityGrant::Kind());
    table.Add(currentUser::Kind());
    // Alarms and timers
    table.Add(alarmLimit::Kind());
    table.Add(alarmDiscrete::Kind());
    table.Add(alarmQuality::Kind());
    table.Add(alarmRate::Kind());
    table.Add(alarmDeviation::Kind());
    table.Add(alarmBits::Kind());
    table.Add(alarmColumn::Kind());
    table.Add(operationTimer::Kind());
    // Signals and drivers
    table.Add(memorySignal::Kind());
    table.Add(driverStatus::Kind());
    table.Add(hostDriver::Kind());
    table.Add(hostSignal::Kind());
    table.Add(simulatorDriver::Kind());
    table.Add(simulatorSignal::Kind());
    table.Add(modbusDriver::Kind());
    table.Add(modbusGroup::Kind());
    table.Add(modbusSignal::Kind());
    table.Add(archiverSourceConnector::Kind());
    table.Add(archiverGroup::Kind());
    // Screens
    table.Add(BasicFrame::Kind());
    table.Add(BasicWindow::Kind());
    table.Add(windowComposed::Kind());
    table.Add(windowTemplate::Kind());
    table.Add(BasicComposition::Kind());
    table.Add(compositionTemplate::Kind());
    table.Add(templateParameter::Kind());
    table.Add(BasicLayer::Kind());
    addElements(table);
    addCharts(table);
    addReports(table);
    // Menus
    table.Add(BasicMenu::Kind());
    table.Add(BasicMenuItem::Kind());
    addActions(table);
}

namespace {

// Whoever loads this library has its kinds, whether it begins with a core, a reader or the table
// itself: hosts and tools do all three. The rows are made when the table is first used.
[[maybe_unused]] const bool isProvided = (KindTable::Provide(&AddBuiltInKinds), true);

} // namespace

} // namespace Nodes
