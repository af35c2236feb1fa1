#pragma once

#include "editor/workspace/Workspace.h"

#include <QFrame>
#include <QStyle>
#include <QVector>

class QLabel;
class QToolButton;

namespace Editor {

/// The line that tells what happened and waits for nobody: information goes by itself; warnings and
/// errors stay until they are closed, and come back when what was told after them has gone. GUI
/// thread.
class NoticeBar : public QFrame
{
    Q_OBJECT

public:
    explicit NoticeBar(QWidget *parent = nullptr);

    void tell(Workspace::Level level, const QString &text);
    /// Nothing of before matters any more.
    void clear();

    /// The picture that tells how much a notice matters.
    static QStyle::StandardPixmap markOf(Workspace::Level level);

signals:
    /// Of everything told before.
    void logRequested();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Notice
    {
        Workspace::Level level;
        QString text;
    };

    void show(const Notice &notice);
    void dismiss();
    void showKept();
    void stopTimer();

    QVector<Notice> m_kept; // warnings and errors that nobody has closed, the latest last
    QLabel *m_mark;
    QLabel *m_text;
    QToolButton *m_log;
    QToolButton *m_close;
    int m_timer = 0;
};

} // namespace Editor
