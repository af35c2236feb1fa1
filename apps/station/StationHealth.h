#pragma once

#include "nodes/alarms/state/AlarmHealth.h"
#include "nodes/archive/recording/ArchiveHealth.h"
#include "nodes/storage/StoreHealth.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

namespace Nodes {
class systemCore;
}

namespace Host {
class DataDirectory;
}

namespace Station {

/// What becomes of the station's records, and how its drivers are: for the status file, and once a
/// second for stderr when it changes. Waits for nothing. GUI thread.
class StationHealth : public QObject
{
    Q_OBJECT

public:
    /// Both outlive finish().
    StationHealth(const Nodes::systemCore &core, const Host::DataDirectory &directory);

    /// The fields "records" and "drivers" of docs/station-status.md.
    QJsonObject records() const;
    QJsonArray drivers() const;

    /// The core has stopped: says on stderr what could not be written or lies elsewhere. The
    /// answers stay as they are now.
    void finish();
    /// Entries, samples and states of alarms that the station did not keep. After finish.
    std::uint64_t lostRecords() const;

private:
    void look();
    void tell();
    std::string trouble() const;
    void tellLosses();
    void tellAside() const;

    const Nodes::systemCore *m_core; // null once finished
    const Host::DataDirectory *m_directory;
    Nodes::StoreHealth m_journal;
    Nodes::AlarmHealth m_alarms;
    Nodes::ArchiveHealth m_archive;
    std::string m_directoryTrouble;
    std::uint64_t m_toldLost = 0;
    std::uint64_t m_toldSamples = 0; // lost
    bool m_wasTold = false;
    QTimer m_timer;
};

} // namespace Station
