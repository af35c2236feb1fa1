#include "editor/shell/StationRun.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include <QTemporaryDir>

namespace Editor {

namespace {

constexpr int patience = 5000; // ms until a station that does not end is ended
constexpr int tailLength = 2000;

} // namespace

StationRun::StationRun(Workspace &workspace, const QString &program, QObject *parent)
    : QObject(parent), m_workspace(workspace), m_program(program)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::started, this, [this] { emit runningChanged(true); });
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &StationRun::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, &StationRun::onError);
}

StationRun::~StationRun()
{
    disconnect(&m_process, nullptr, this, nullptr);
    stop();
    if (!m_process.waitForFinished(patience))
        m_process.kill();
    m_process.waitForFinished(patience);
}

void StationRun::start(const QStringList &options)
{
    if (isRunning())
        return;
    m_isStopping = false;
    m_records = std::make_unique<QTemporaryDir>();
    QStringList arguments{m_workspace.session().file(), QStringLiteral("--data"),
                          m_records->path()};
    m_process.start(m_program, arguments + options);
}

void StationRun::stop()
{
    m_isStopping = true;
    if (isRunning())
        m_process.terminate();
}

void StationRun::onFinished(int code, QProcess::ExitStatus status)
{
    const QString said = QString::fromUtf8(m_process.readAll()).right(tailLength).trimmed();
    m_records.reset();
    emit runningChanged(false);
    if (m_isStopping || (code == 0 && status == QProcess::NormalExit))
        return;
    m_workspace.tell(Workspace::Error,
                     status == QProcess::CrashExit
                         ? tr("Станция оператора завершилась аварийно. %1").arg(said)
                         : tr("Станция оператора завершилась с кодом %1. %2").arg(code).arg(said));
}

void StationRun::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        m_workspace.tell(Workspace::Error,
                         tr("Станция оператора не запущена: %1 (%2). Программа «station» должна "
                            "лежать рядом с конфигуратором.")
                             .arg(m_process.errorString(), m_program));
}

} // namespace Editor
