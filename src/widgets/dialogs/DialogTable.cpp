// The kinds of dialogs, one row each. Nothing includes this file: who needs a dialog asks for its
// key, and so does not depend on all the others.
#include "widgets/charts/export/ExportProgress.h"
#include "widgets/charts/overlay/PastPeriodDialog.h"
#include "widgets/charts/own/TrendDialog.h"
#include "widgets/dialogs/AuthenticationWindow.h"
#include "widgets/dialogs/DialogFrames.h"
#include "widgets/dialogs/DialogPlacement.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/RefusalBox.h"
#include "widgets/dialogs/TimeDialog.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/VirtualNumpad.h"
#include "widgets/elements/health/WhatIfDialog.h"
#include "widgets/eventlist/DateIntervalWidget.h"
#include "widgets/eventlist/filter/EventFilterDialog.h"
#include "widgets/events/details/AlarmLimitsDialog.h"
#include "widgets/events/details/AlarmNoteDialog.h"
#include "widgets/reports/display/ReportDialog.h"
#include "widgets/reports/display/ReportIntervalDialog.h"
#include "widgets/tools/ArchiverDBMgrDialog.h"
#include "widgets/tools/problems/ProblemsDialog.h"
#include "widgets/windows/frames/FrameWindow.h"
#include "widgets/windows/loading/LoadDialog.h"

#include "nodes/actions/BasicAction.h"
#include "nodes/visual/events/widgetEventList.h"

namespace Widgets {

namespace {

constexpr bool single = true;
constexpr bool several = false;
constexpr bool endsWithUser = true;

template <class Dialog> QWidget *onParent(const DialogRequest &request)
{
    return new Dialog(request.parent);
}

QWidget *logIn(const DialogRequest &request)
{
    auto *window = new AuthenticationWindow(request.parent);
    window->setNode(request.node);
    return window;
}

QWidget *archiveFiles(const DialogRequest &request)
{
    return new ArchiverDBMgrDialog(dynamic_cast<Nodes::BasicAction *>(request.node),
                                   ArchiverDBMgrDialog::Key, request.parent);
}

QWidget *eventSources(const DialogRequest &request)
{
    return new EventFilterDialog(dynamic_cast<Nodes::widgetEventList *>(request.node),
                                 request.parent);
}

QWidget *load(const DialogRequest &request)
{
    return new LoadDialog(request.subject, request.parent);
}

// The window goes, the dialog is the caller's again.
int runDecorated(QDialog &dialog)
{
    const QPointer<FrameWindow> frame = new FrameWindow;
    const QPointer<QDialog> alive = &dialog;
    frame->setAttribute(Qt::WA_DeleteOnClose, false);
    frame->setResizeableFrame(false);
    frame->setDialog(&dialog);
    const int result = frame->exec();
    if (alive)
        dialog.setParent(nullptr);
    delete frame;
    return alive ? result : QDialog::Rejected;
}

// The frame belongs to the window and takes the dialog along.
void openDecorated(QDialog &dialog, QWidget &over)
{
    auto *frame = new FrameWindow(&over);
    const QPointer<QWidget> focus = dialog.focusWidget(); // forgotten with the new parent
    frame->setResizeableFrame(false);
    frame->setDialog(&dialog);
    frame->setWindowModality(Qt::WindowModal);
    frame->resize(frame->size().expandedTo(frame->minimumSizeHint()));
    frame->move(over.frameGeometry().center() - frame->rect().center());
    DialogPlacement::fit(*frame);
    frame->show();
    frame->raise();
    frame->activateWindow();
    (focus ? focus.data() : &dialog)->setFocus(Qt::OtherFocusReason);
}

const bool isRunning = DialogFrames::install(runDecorated, openDecorated);

const bool isInstalled = Dialogs::install({
    {VirtualKeyboard::Key, onParent<VirtualKeyboard>},
    {VirtualNumpad::Key, onParent<VirtualNumpad>},
    {PlainMessageBox::Key, onParent<PlainMessageBox>},
    {RefusalBox::Key, onParent<RefusalBox>},
    {AuthenticationWindow::Key, logIn, single},
    {ArchiverDBMgrDialog::Key, archiveFiles, single, endsWithUser},
    {LoadDialog::Key, load},
    {ProblemsDialog::Key, onParent<ProblemsDialog>, single, endsWithUser},
    {TimeDialog::Key, onParent<TimeDialog>},
    {ExportProgress::Key, onParent<ExportProgress>},
    {PastPeriodDialog::Key, onParent<PastPeriodDialog>},
    {WhatIfDialog::Key, onParent<WhatIfDialog>, several, endsWithUser},
    {AlarmNoteDialog::Key, onParent<AlarmNoteDialog>, several, endsWithUser},
    {AlarmLimitsDialog::Key, onParent<AlarmLimitsDialog>, several, endsWithUser},
    {DateIntervalWidget::Key, onParent<DateIntervalWidget>},
    {EventFilterDialog::Key, eventSources},
    {ReportIntervalDialog::Key, onParent<ReportIntervalDialog>},
    {ReportDialog::Key, onParent<ReportDialog>, several, endsWithUser},
    {TrendDialog::Key, onParent<TrendDialog>, several, endsWithUser},
});

} // namespace

} // namespace Widgets
