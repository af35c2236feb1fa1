#include "widgets/reports/printing/PrintCommand.h"

#include <utility>

namespace Widgets {

namespace {

constexpr int usualPatience = 60000; // ms: a server far away, a large report
constexpr int longestReason = 300;   // characters

} // namespace

PrintCommand::PrintCommand(QObject *parent) : QObject(parent)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(usualPatience);
    connect(&m_patience, &QTimer::timeout, this, &PrintCommand::onTimeout);
    connect(&m_process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &PrintCommand::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, &PrintCommand::onError);
}

PrintCommand::~PrintCommand()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void PrintCommand::start(const QString &file, const QString &printer, const QString &title)
{
    m_isRunning = true;
    m_printer = printer;
    QStringList arguments{QStringLiteral("-t"), title};
    if (!printer.isEmpty())
        arguments << QStringLiteral("-d") << printer;
    arguments << QStringLiteral("--") << file;
    m_patience.start();
    m_process.start(QStringLiteral("lp"), arguments, QIODevice::ReadOnly);
}

void PrintCommand::onFinished(int code, QProcess::ExitStatus status)
{
    if (status == QProcess::NormalExit && code == 0)
        return end(QString());
    const QString reason =
        QString::fromLocal8Bit(m_process.readAllStandardError()).simplified().left(longestReason);
    const QString printer = m_printer.isEmpty() ? QStringLiteral("принтер по умолчанию")
                                                : QStringLiteral("принтер «%1»").arg(m_printer);
    end(QStringLiteral("%1 не принимает заданий%2. Проверьте, что он включён и настроен в системе.")
            .arg(printer, reason.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(reason)));
}

void PrintCommand::onError(QProcess::ProcessError error)
{
    if (error == QProcess::FailedToStart)
        end(QStringLiteral("на этой станции нет службы печати (команды lp). Её ставит наладчик: "
                           "пакеты cups и cups-client."));
}

void PrintCommand::onTimeout()
{
    end(QStringLiteral("служба печати не отвечает. Проверьте связь с принтером и повторите."));
    m_process.kill();
}

// What a command that is ended for its slowness still says is no news.
void PrintCommand::end(const QString &error)
{
    m_patience.stop();
    if (std::exchange(m_isRunning, false))
        emit finished(error);
}

} // namespace Widgets
