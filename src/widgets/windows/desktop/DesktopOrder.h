#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

#include <memory>

class QWidget;
class QWindow;

namespace Widgets {

class ReturnButton;

/// How the windows of the application stand to each other on the desktop, whoever opens them:
/// - Each belongs to the frame of its display, a modal one to the modal window it was opened over:
///   desktops lift a focused full-screen window above all windows but its own.
/// - The alarm window stays usable whatever modal window is up, unless that is its own.
/// - A new modal window is not hidden by the alarm window: it lies above it, and beside it where
///   the screen has room.
/// - Minimised frames can be called back without a task bar.
/// Made by the window manager, one at a time. GUI thread.
class WIDGETS_EXPORT DesktopOrder : public QObject
{
    Q_OBJECT

public:
    explicit DesktopOrder(QObject *parent = nullptr);
    ~DesktopOrder() override;

    /// Names the alarm window, whether it is shown yet or not. It may be destroyed any time; of
    /// several the last one named counts.
    static void keepUsable(QWidget &alarms);
    /// Raises the alarm window without giving it the focus. A modal window that would be hidden
    /// stays above, unless it covers most of the alarms itself.
    static void raiseQuietly(QWidget &alarms);

    /// Shows frames that are minimised, the one worked in last in front.
    static void restoreFrames();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onWidgetEvent(QWidget &widget, const QEvent &event);
    void onWindowEvent(QWindow &window, const QEvent &event);
    void onShow(QWindow &window);
    QWindow *ownerOf(const QWindow &window) const;
    QWindow *frameFor(const QWindow &window) const;
    bool isFrame(const QWindow &window) const;
    bool isAlarms(const QWindow &window) const;
    void leadBack();
    void makeRoom(const QWindow &modal) const;
    void keepAlarmsUsable();
    void followFrame();

    QVector<QPointer<QWidget>> m_frames; // the one that was active last comes last
    QVector<QPointer<QWindow>> m_modal;  // shown, the newest last
    QPointer<QWindow> m_alarmsFrame; // as the desktop was told; for Qt a modal window may stand in
    std::unique_ptr<ReturnButton> m_return;
    bool m_isShowingAlarms = false;
    QTimer m_following;
};

} // namespace Widgets
