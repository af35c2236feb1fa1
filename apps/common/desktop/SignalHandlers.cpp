#include "apps/common/desktop/SignalHandlers.h"

#include <QSocketNotifier>
#include <QtDebug>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace Host {

namespace {

volatile std::sig_atomic_t writeEnd = -1;

void onSignal(int number)
{
    const int savedError = errno;
    const char byte = static_cast<char>(number);
    // A full pipe means that a signal is on its way already.
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
    errno = savedError;
}

void install(int number)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    // Back to the default after the first: a program that hangs can still be ended.
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigaction(number, &action, nullptr);
}

} // namespace

SignalHandlers::SignalHandlers(QObject *parent) : QObject(parent)
{
    if (::pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("signals will not end the program cleanly: %s", std::strerror(errno));
        return;
    }
    writeEnd = m_pipe[1];
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &SignalHandlers::read);
    install(SIGTERM);
    install(SIGINT);
}

SignalHandlers::~SignalHandlers()
{
    if (!m_notifier)
        return;
    std::signal(SIGTERM, SIG_DFL);
    std::signal(SIGINT, SIG_DFL);
    writeEnd = -1;
    ::close(m_pipe[0]);
    ::close(m_pipe[1]);
}

void SignalHandlers::read()
{
    char bytes[16];
    while (::read(m_pipe[0], bytes, sizeof bytes) > 0)
        m_wasReceived = true;
    emit received();
}

} // namespace Host
