#pragma once

#include "editor/project/DiskJob.h"

#include <QObject>
#include <QPointer>
#include <QProgressDialog>

class QWidget;

namespace Editor {

class DiskWork;

/// Waits for work on a disk without the window standing still: what takes longer than a moment is
/// told in a dialog that the user can leave. Nothing can be edited meanwhile. GUI thread.
class DiskWait : public QObject
{
    Q_OBJECT

public:
    static constexpr int DefaultMoment = 400; // ms

    /// `window` is what the dialog stands in front of.
    explicit DiskWait(QWidget &window, QObject *parent = nullptr);

    /// Returns when the job has ended, the user has left it or the program is being ended: nothing
    /// in the latter cases, and the job's `late` is called when it ends after all.
    std::optional<Nodes::Result> run(const DiskJob &job);
    /// How long nothing is told, ms.
    void setMoment(int milliseconds) { m_moment = milliseconds; }
    /// Null while nothing is told.
    QProgressDialog *dialog() const { return m_dialog; }

private:
    void waitMoment(const DiskWork &work);
    void waitTelling(const DiskWork &work, const DiskJob &job);

    QWidget &m_window;
    int m_moment = DefaultMoment;
    QPointer<QProgressDialog> m_dialog;
};

} // namespace Editor
