#pragma once

#include "apps/station/WindowReport.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <vector>

namespace Widgets {
class WindowManager;
}

namespace Host {
class StartClock;
}

namespace Station {

class StationHealth;

/// Health of the station for whoever supervises it: a JSON file, replaced as a whole once a second
/// and when the number of values of one quality changes. It tells what the elements show, not what
/// the signals hold, so a screen that no longer follows its signals shows here. The format is
/// described in docs/station-status.md. Failures to write are logged once and tried again.
/// GUI thread.
class StationStatus : public QObject
{
    Q_OBJECT

public:
    /// Writes state "starting"; without a file name nothing is ever written. `clock` outlives it.
    StationStatus(const std::string &file, bool withTexts, const Host::StartClock &clock);
    /// Writes state "stopped".
    ~StationStatus() override;

    /// Tells of records and drivers too, from now on; `health` may be destroyed before this object.
    void watch(const StationHealth &health) { m_health = &health; }
    /// State "running" from now on; `manager` may be destroyed before this object.
    void serve(Widgets::WindowManager &manager);

private:
    void tick();
    std::vector<WindowReport> look() const;
    QJsonObject countAlarms() const;
    void write(const char *state);
    QByteArray describe(const char *state) const;
    bool replaceFile(const QByteArray &content) const;

    QByteArray m_file;
    bool m_withTexts;
    const Host::StartClock &m_clock;
    QPointer<Widgets::WindowManager> m_manager;
    QPointer<const StationHealth> m_health;
    QString m_project;
    QTimer m_timer;
    QElapsedTimer m_sinceWrite;
    std::vector<WindowReport> m_windows; // as last written
    QJsonObject m_alarms;
    bool m_isFailing = false;
};

} // namespace Station
