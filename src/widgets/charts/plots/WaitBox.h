#pragma once

#include "widgets/WidgetsExport.h"

#include <QMessageBox>
#include <QPointer>
#include <QTimer>

namespace Widgets {

/// "Запрос данных": stands over a plot from an accepted request to its answer. exec() returns when
/// accept() is called; nothing is shown for an answer that comes within the delay. Blocks the
/// window of its plot only, and not for ever: Escape, and the time limit, reject it. Survives
/// neither its plot nor the end of the application, which end the loop too. GUI thread.
class WIDGETS_EXPORT WaitBox : public QMessageBox
{
    Q_OBJECT

public:
    static constexpr int Tick = 250;  ///< ms between steps of the animation
    static constexpr int Delay = 250; ///< ms before anything is painted

    explicit WaitBox(QWidget *plot);

    /// Accepted or Rejected. Rejected at once while it is running already.
    int exec() override;
    bool isRunning() const { return m_isRunning; }
    /// Whether it was the time limit that rejected it the last time.
    bool isTimeUp() const { return m_isTimeUp; }
    /// Milliseconds until it gives up; 20 s at first.
    void setTimeLimit(int milliseconds) { m_timeLimit = milliseconds; }

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void onTick();
    void onTimeLimit();
    void appear();

    int m_step = 0; // 0 to 3
    QWidget *m_plot;
    QTimer m_ticks;
    QTimer m_appearance;
    QTimer m_limit;
    int m_timeLimit = 20000;
    bool m_isRunning = false;
    bool m_isTimeUp = false;
};

} // namespace Widgets
