#include "widgets/windows/loading/NodeLoadingThread.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Widgets {

namespace {

constexpr int progressPeriod = 50; // ms

} // namespace

NodeLoadingThread::NodeLoadingThread(const QString &path, QObject *parent)
    : QThread(parent),
      m_file(QFileInfo(path).isDir() ? QDir(path).filePath(QStringLiteral("project.xml")) : path),
      m_timer(this)
{
    m_timer.setInterval(progressPeriod);
    connect(this, &QThread::started, &m_timer, qOverload<>(&QTimer::start));
    connect(&m_timer, &QTimer::timeout, this, &NodeLoadingThread::reportProgress);
    connect(this, &QThread::finished, this, &NodeLoadingThread::reportOutcome);
}

NodeLoadingThread::~NodeLoadingThread()
{
    cancel();
    wait();
}

std::unique_ptr<Nodes::NodesCollection> NodeLoadingThread::takeProject()
{
    return std::move(m_project);
}

void NodeLoadingThread::run()
{
    Nodes::ProjectReader reader;
    reader.SetProgress(&m_progress);
    m_result = reader.ReadFile(QFile::encodeName(m_file).toStdString(), m_project);
    m_report = reader.GetReport();
}

void NodeLoadingThread::reportProgress()
{
    const std::size_t total = m_progress.GetTotal();
    const std::size_t done = m_progress.GetDone();
    if (total == 0)
        emit progress(0, tr("Чтение файла"));
    else
        emit progress(int(done * 100 / total),
                      tr("Создание узлов: %L1 из %L2").arg(done).arg(total));
}

void NodeLoadingThread::reportOutcome()
{
    m_timer.stop();
    if (!m_result) {
        emit failed();
        return;
    }
    emit progress(100, tr("Проект прочитан"));
    emit loaded();
}

} // namespace Widgets
