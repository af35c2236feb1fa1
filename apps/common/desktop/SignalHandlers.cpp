#include "apps/common/desktop/SignalHandlers.h"

#include <QSocketNotifier>
#include <QtDebug>

#include <array>
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

// The terminal goes, the user logs out, or somebody asks.
constexpr std::array handled{SIGTERM, SIGINT, SIGHUP};

void install(int number)
{
    struct sigaction action = {};
    // Whoever started the program with a signal ignored, as nohup does, means it.
    if (sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
        return;
    action = {};
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
    for (const int number : handled)
        install(number);
}

SignalHandlers::~SignalHandlers()
{
    if (!m_notifier)
        return;
    for (const int number : handled) {
        if (std::signal(number, SIG_DFL) == SIG_IGN)
            std::signal(number, SIG_IGN);
    }
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
