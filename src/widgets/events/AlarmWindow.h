#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/events/BasicEvent.h"
#include "utils/settings/ConfiguratorWindow.h"

#include <QSet>
#include <QTimer>

#include <vector>

namespace Widgets {

class AlarmDialog;

/// The operator's list of active alarms, on top of the other windows. It is hidden and shown, never
/// destroyed by closing; place and size are kept for the next run. GUI thread.
class WIDGETS_EXPORT AlarmWindow : public FrameWindow, public Utils::ConfiguratorWindow
{
    Q_OBJECT

public:
    explicit AlarmWindow(QWidget *parent = nullptr);
    ~AlarmWindow() override;

    AlarmDialog &dialog() const { return *m_dialog; }

    /// Takes a new or changed alarm. The window comes up shortly afterwards, once for many, unless
    /// the alarm was merely acknowledged or is over.
    void ReceiveAlarm(const Nodes::BasicEvent &event) { ReceiveAlarms({event}); }
    void ReceiveAlarms(const std::vector<Nodes::BasicEvent> &events);
    /// These alarms, by their ids, are over.
    void forget(const QSet<unsigned long> &alarms);
    /// An alarm came and the window is about to follow.
    bool isComingUp() const { return m_comingUp.isActive(); }
    /// For an operator who asks for the list: brings it up to date, then up, and gives it the
    /// focus.
    void open();
    /// Switches the sound on and shows or raises the window. The focus stays where the operator
    /// works. Nothing unless the alarm subsystem has its alarm window switched on.
    void bringUp();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    void comeUp(bool takesFocus);
    void makeRoom(int before);
    Nodes::Result loadPlace();
    /// `free`: height at the bottom of the screen that it leaves, if there is room above.
    void keepOnScreen(int keptWidth, int free);

    AlarmDialog *m_dialog;
    QTimer m_comingUp;
    // What an operator chose, and what was made of it for what is folded out beside the list.
    QRect m_chosen;
    QRect m_made;
    int m_besides = 0; // height beside the list when it was chosen
};

} // namespace Widgets
