#pragma once

#include "apps/common/desktop/DataDirectory.h"
#include "apps/common/desktop/SignalHandlers.h"
#include "apps/common/desktop/StartClock.h"
#include "apps/station/GeneratedHistory.h"
#include "apps/station/StationHealth.h"
#include "apps/station/StationStatus.h"

#include <QObject>

#include <memory>

namespace Nodes {
class systemCore;
}
namespace Widgets {
class LoadDialog;
class ScheduledReports;
class SimulationMark;
class WindowManager;
} // namespace Widgets

namespace Station {

struct StationOptions;

/// One run of the station from loading the project to the orderly end: windows, then the window
/// manager, then the core. Made after the QApplication.
class StationApplication : public QObject
{
    Q_OBJECT

public:
    explicit StationApplication(const StationOptions &options);
    ~StationApplication() override;

    /// Exit code of the process: 0, 1 when the station could not start, 4 when records were lost,
    /// those of the pictures.
    [[nodiscard]] int run();

private:
    bool load();
    QString stationNames() const;
    void logFindings(const Widgets::LoadDialog &dialog) const;
    QString dataPath() const;
    bool openData();
    bool generateHistory();
    void startCore();
    bool hasFrames() const;
    int serve();
    void shutDown();
    void refuse(const QString &text, const std::string &detail) const;
    bool isAttended() const;

    const StationOptions &m_options;
    Host::SignalHandlers m_signals;
    Host::StartClock m_clock;
    std::unique_ptr<StationHealth> m_health; // told of in the last status
    StationStatus m_status;
    Host::DataDirectory m_data;
    std::unique_ptr<Nodes::systemCore> m_core;
    GeneratedHistory m_generated;
    std::unique_ptr<Widgets::SimulationMark> m_mark; // while the values are made up
    std::unique_ptr<Widgets::WindowManager> m_manager;
    std::unique_ptr<Widgets::ScheduledReports> m_reports;
};

} // namespace Station
