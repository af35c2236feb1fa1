#include "apps/station/StationStatus.h"

#include "apps/common/desktop/StartClock.h"
#include "apps/station/StationHealth.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/system/systemCore.h"
#include "utils/relay/RelayDispatcher.h"
#include "widgets/windows/WindowManager.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace Station {

namespace {

constexpr int formatVersion = 1;
constexpr int lookPeriod = 500;   // ms
constexpr int writePeriod = 1000; // ms

/// Bytes; 0 when the kernel does not tell.
double residentMemory()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readLine().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE));
}

} // namespace

StationStatus::StationStatus(const std::string &file, bool withTexts, const Host::StartClock &clock)
    : m_file(QByteArray::fromStdString(file)), m_withTexts(withTexts), m_clock(clock)
{
    connect(&m_timer, &QTimer::timeout, this, &StationStatus::tick);
    write("starting");
}

StationStatus::~StationStatus()
{
    m_windows.clear();
    m_alarms = {};
    write("stopped");
}

void StationStatus::serve(Widgets::WindowManager &manager)
{
    m_manager = &manager;
    m_project = QString::fromStdString(manager.getCore()->GetProjectFile());
    if (!m_file.isEmpty())
        m_timer.start(lookPeriod);
}

std::vector<WindowReport> StationStatus::look() const
{
    std::vector<WindowReport> windows;
    for (const Widgets::WidgetLink &link : m_manager->windows())
        windows.emplace_back(link);
    return windows;
}

/// Empty when the project watches no alarms.
QJsonObject StationStatus::countAlarms() const
{
    using State = Nodes::AlarmState;
    const Nodes::systemAlarming *alarming = m_manager->getSystemAlarming();
    if (!alarming)
        return {};
    int active = 0;
    int unacknowledged = 0;
    int hidden = 0;
    for (const Nodes::BasicEvent &alarm : alarming->GetActiveAlarms()) {
        const State state = alarm.alarmState;
        active += state == State::ActiveUnacked || state == State::ActiveAcked;
        unacknowledged += state == State::ActiveUnacked || state == State::ReturnedUnacked;
        hidden +=
            state == State::Shelved || state == State::Suppressed || state == State::OutOfService;
    }
    return {{"active", active}, {"unacknowledged", unacknowledged}, {"hidden", hidden}};
}

void StationStatus::tick()
{
    if (!m_manager)
        return;
    std::vector<WindowReport> windows = look();
    QJsonObject alarms = countAlarms();
    if (windows == m_windows && alarms == m_alarms && m_sinceWrite.elapsed() < writePeriod)
        return;
    m_windows = std::move(windows);
    m_alarms = std::move(alarms);
    write("running");
}

QByteArray StationStatus::describe(const char *state) const
{
    QJsonArray windows;
    for (const WindowReport &window : m_windows)
        windows.append(window.toJson(m_withTexts));
    QJsonObject status{
        {"format", formatVersion},
        {"state", state},
        {"pid", double(QCoreApplication::applicationPid())},
        {"written", QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs)},
        {"uptime", double(m_clock.elapsed()) / 1000},
        {"project", m_project},
        {"rssBytes", residentMemory()},
        {"windows", windows},
    };
    if (!m_alarms.isEmpty())
        status["alarms"] = m_alarms;
    if (m_health) {
        status["records"] = m_health->records();
        status["drivers"] = m_health->drivers();
    }
    if (m_manager)
        status["queues"] = QJsonObject{{"actions", m_manager->queuedActions()},
                                       {"relays", Utils::RelayDispatcher::instance().waiting()}};
    if (const auto firstFrame = m_clock.firstFrame())
        status["firstFrameMs"] = double(*firstFrame);
    return QJsonDocument(status).toJson();
}

void StationStatus::write(const char *state)
{
    if (m_file.isEmpty())
        return;
    m_sinceWrite.start();
    const bool isWritten = replaceFile(describe(state));
    if (!isWritten && !m_isFailing)
        std::fprintf(stderr, "station: cannot write the status file \"%s\": %s; trying on\n",
                     m_file.constData(), std::strerror(errno));
    m_isFailing = !isWritten;
}

// Not flushed to the disk: after a power failure the file is meaningless anyway, and the GUI
// thread must not wait for a disk once a second.
bool StationStatus::replaceFile(const QByteArray &content) const
{
    const QByteArray aside = m_file + ".new";
    std::FILE *file = std::fopen(aside.constData(), "w");
    if (!file)
        return false;
    const bool isWritten = std::fwrite(content.constData(), 1, std::size_t(content.size()), file) ==
                           std::size_t(content.size());
    return std::fclose(file) == 0 && isWritten &&
           std::rename(aside.constData(), m_file.constData()) == 0;
}

} // namespace Station
