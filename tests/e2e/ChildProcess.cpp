#include "e2e/ChildProcess.h"

#include <csignal>
#include <sys/prctl.h>

namespace EndToEnd {

ChildProcess::ChildProcess()
{
    setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

ChildProcess::~ChildProcess()
{
    (void)end();
}

bool ChildProcess::begin(const QString &program, const QStringList &arguments)
{
    start(program, arguments);
    return waitForStarted();
}

bool ChildProcess::end()
{
    if (state() != QProcess::NotRunning) {
        terminate();
        if (!waitForFinished(30000)) {
            kill();
            waitForFinished();
        }
    }
    return exitStatus() == QProcess::NormalExit && exitCode() == 0;
}

void ChildProcess::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

} // namespace EndToEnd
