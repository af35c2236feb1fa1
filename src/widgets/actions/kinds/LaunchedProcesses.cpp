#include "widgets/actions/kinds/LaunchedProcesses.h"

#include "widgets/actions/running/ActionDispatcher.h"
#include "widgets/actions/running/Refusals.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>

namespace Widgets {

namespace {

constexpr int patience = 1000; // ms, for all together

std::string nameOf(const QProcess &process)
{
    return "«" + process.program().toStdString() + "»";
}

// Whatever has a slash is a file: relative to the directory it runs in, not to the station's.
QString programOf(const Nodes::actionLaunchProcess::Command &command)
{
    const QString program = QString::fromStdString(command.program);
    return program.contains(QLatin1Char('/'))
               ? QDir(QString::fromStdString(command.directory)).filePath(program)
               : program;
}

} // namespace

LaunchedProcesses &LaunchedProcesses::of(ActionDispatcher &actions)
{
    auto *made = actions.findChild<LaunchedProcesses *>(QString(), Qt::FindDirectChildrenOnly);
    return made ? *made : *new LaunchedProcesses(&actions);
}

LaunchedProcesses::LaunchedProcesses(QObject *parent) : QObject(parent) {}

LaunchedProcesses::~LaunchedProcesses()
{
    for (auto running = m_running.cbegin(); running != m_running.cend(); ++running) {
        running.key()->disconnect(this);
        running.value().write(Nodes::LevelWarning, "Программа " + nameOf(*running.key()) +
                                                       " завершается вместе со станцией");
        running.key()->terminate();
    }
    const QDeadlineTimer deadline(patience);
    const QList<QProcess *> processes = m_running.keys();
    for (QProcess *process : processes) {
        if (!process->waitForFinished(int(deadline.remainingTime())))
            process->kill();
    }
}

Nodes::Result LaunchedProcesses::launch(const Nodes::actionLaunchProcess::Command &command,
                                        const ActionJournal &journal, const ActionTrigger &trigger)
{
    if (m_running.size() >= MaximumRunning)
        return Nodes::Result(Nodes::Result::LimitExceeded,
                             command.program + ": too many programs run");
    QStringList arguments;
    for (const std::string &argument : command.arguments)
        arguments << QString::fromStdString(argument);
    auto *process = new QProcess(this);
    process->setProgram(programOf(command));
    process->setArguments(arguments);
    process->setWorkingDirectory(QString::fromStdString(command.directory));
    // Nobody reads what it writes: kept, it would fill the memory.
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    m_running.insert(process, journal);
    watch(process, journal, trigger);
    process->start();
    return {};
}

void LaunchedProcesses::watch(QProcess *process, const ActionJournal &journal,
                              const ActionTrigger &trigger)
{
    connect(process, &QProcess::started, this, [process, journal] {
        journal.write(Nodes::LevelAction, "Запущена программа " + nameOf(*process));
    });
    connect(process, &QProcess::errorOccurred, this,
            [this, process, journal, trigger](QProcess::ProcessError error) {
                if (error != QProcess::FailedToStart)
                    return;
                const std::string text = "Программа " + nameOf(*process) +
                                         " не запущена: " + process->errorString().toStdString();
                journal.write(Nodes::LevelWarning, text);
                forget(process);
                ShowActionError(QString::fromStdString(text), trigger);
            });
    connect(process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            [this, process, journal](int code, QProcess::ExitStatus status) {
                const bool isCrash = status == QProcess::CrashExit;
                journal.write(isCrash || code != 0 ? Nodes::LevelWarning : Nodes::LevelInformation,
                              "Программа " + nameOf(*process) +
                                  (isCrash ? " завершилась аварийно"
                                           : " завершилась, код " + std::to_string(code)));
                forget(process);
            });
}

void LaunchedProcesses::forget(QProcess *process)
{
    m_running.remove(process);
    process->deleteLater();
}

} // namespace Widgets
