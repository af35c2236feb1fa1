#pragma once

#include "editor/workspace/Workspace.h"

#include <QFrame>

class QLabel;
class QToolButton;

namespace Editor {

/// The line that tells what happened and waits for nobody: information goes by itself, warnings and
/// errors stay until they are closed or the next one comes. GUI thread.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    void tell(Workspace::Level level, const QString &text);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    QLabel *m_mark;
    QLabel *m_text;
    QToolButton *m_close;
    int m_timer = 0;
};

} // namespace Editor
