#include "widgets/tools/FileCopier.h"

#include <QFileInfo>
#include <QThread>

namespace Widgets {

namespace {

constexpr int progressPeriod = 200; // ms
constexpr double unknownShare = -1;

} // namespace

struct FileCopier::Task
{
    std::unique_ptr<Nodes::DatabaseCopy> copy;
    Nodes::Result result{Nodes::Result::Cancelled};
};

FileCopier::FileCopier(QObject *parent) : QObject(parent)
{
    m_timer.setInterval(progressPeriod);
    connect(&m_timer, &QTimer::timeout, this, &FileCopier::tellProgress);
}

FileCopier::~FileCopier()
{
    cancel();
    if (m_thread)
        m_thread->wait();
    delete m_thread;
}

void FileCopier::start(Copies copies)
{
    if (m_thread || copies.empty())
        return;
    m_tasks.clear();
    for (std::unique_ptr<Nodes::DatabaseCopy> &copy : copies)
        m_tasks.push_back({std::move(copy), {Nodes::Result::Cancelled}});
    m_current = 0;
    m_isCancelled = false;
    m_thread = QThread::create([this] { run(); });
    connect(m_thread, &QThread::finished, this, &FileCopier::onFinished);
    m_thread->start();
    m_timer.start();
    tellProgress();
}

void FileCopier::run()
{
    for (std::size_t i = 0; i < m_tasks.size() && !m_isCancelled; ++i) {
        m_current = i;
        m_tasks[i].result = m_tasks[i].copy->Run();
    }
}

void FileCopier::cancel()
{
    m_isCancelled = true;
    for (const Task &task : m_tasks)
        task.copy->Cancel();
}

void FileCopier::end()
{
    cancel();
    if (m_thread)
        m_thread->wait();
    onFinished();
}

void FileCopier::onFinished()
{
    if (!m_thread)
        return;
    m_timer.stop();
    m_thread->deleteLater();
    m_thread = nullptr;
    const std::vector<Task> done = std::move(m_tasks);
    m_tasks.clear();
    for (const Task &task : done)
        emit copied(*task.copy, task.result);
    emit finished();
}

void FileCopier::tellProgress()
{
    if (!m_thread)
        return;
    const std::size_t current = m_current;
    const Nodes::DatabaseCopy &copy = *m_tasks[current].copy;
    const bool isVerifying = copy.GetPhase() == Nodes::DatabaseCopy::Phase::Verifying;
    const QString count = m_tasks.size() == 1
                              ? QString()
                              : QStringLiteral(" (%1 из %2)").arg(current + 1).arg(m_tasks.size());
    const QString name = QFileInfo(QString::fromStdString(copy.GetFrom())).fileName();
    emit progressed((isVerifying ? QStringLiteral("Проверяется копия «%1»%2…")
                                 : QStringLiteral("Копируется «%1»%2…"))
                        .arg(name, count),
                    isVerifying ? unknownShare : copy.GetProgress());
}

} // namespace Widgets
