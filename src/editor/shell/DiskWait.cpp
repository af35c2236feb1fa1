#include "editor/shell/DiskWait.h"

#include "editor/project/DiskWork.h"

#include "nodes/serial/LoadProgress.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QPushButton>
#include <QTimer>

namespace Editor {

namespace {

constexpr int lookPeriod = 100; // ms between two looks at how far it has come

void show(QProgressDialog &dialog, const Nodes::LoadProgress *progress)
{
    const int total = progress ? int(progress->GetTotal()) : 0;
    dialog.setMaximum(total); // 0: it moves without telling how far
    dialog.setValue(total > 0 ? int(progress->GetDone()) : 0);
}

} // namespace

DiskWait::DiskWait(QWidget &window, QObject *parent) : QObject(parent), m_window(window) {}

std::optional<Nodes::Result> DiskWait::run(const DiskJob &job)
{
    auto *work = new DiskWork(this);
    work->start(job.run);
    waitMoment(*work);
    if (!work->isDone())
        waitTelling(*work, job);
    if (work->isDone()) {
        work->deleteLater();
        return work->result();
    }
    if (job.progress)
        job.progress->Cancel();
    connect(work, &DiskWork::finished, this, [work, late = job.late] {
        work->deleteLater();
        if (late)
            late(work->result());
    });
    return std::nullopt;
}

// What is typed or clicked in that moment waits, and is answered after it.
void DiskWait::waitMoment(const DiskWork &work)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    QEventLoop loop;
    connect(&work, &DiskWork::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(m_moment, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    QGuiApplication::restoreOverrideCursor();
}

void DiskWait::waitTelling(const DiskWork &work, const DiskJob &job)
{
    const QString leave = job.progress ? tr("Отмена") : tr("Не ждать");
    QProgressDialog dialog(job.title, leave, 0, 0, &m_window);
    m_dialog = &dialog;
    dialog.setWindowTitle(tr("Конфигуратор"));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    dialog.setMinimumWidth(420);
    dialog.findChild<QPushButton *>()->setAutoDefault(false);
    QEventLoop loop;
    connect(&work, &DiskWork::finished, &loop, &QEventLoop::quit);
    connect(&dialog, &QProgressDialog::canceled, &loop, &QEventLoop::quit);
    connect(&dialog, &QDialog::finished, &loop, &QEventLoop::quit); // whatever closed it
    QTimer look;
    connect(&look, &QTimer::timeout, &dialog, [&] { show(dialog, job.progress.get()); });
    look.start(lookPeriod);
    dialog.show();
    dialog.setFocus(); // a key that was typed before must not leave
    loop.exec();
}

} // namespace Editor
