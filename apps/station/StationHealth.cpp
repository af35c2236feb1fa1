#include "apps/station/StationHealth.h"

#include "apps/common/desktop/DataDirectory.h"

#include "nodes/alarms/systemAlarming.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/drivers/BasicDriver.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"

#include <QDateTime>

#include <cstdio>

namespace Station {

namespace {

constexpr int lookPeriod = 1000; // ms

void addTime(QJsonObject &object, const char *name, Nodes::Timestamp time)
{
    if (time != 0)
        object[QLatin1String(name)] =
            QDateTime::fromMSecsSinceEpoch(time / 1000, Qt::UTC).toString(Qt::ISODateWithMs);
}

void addText(QJsonObject &object, const char *name, const std::string &text)
{
    if (!text.empty())
        object[QLatin1String(name)] = QString::fromStdString(text);
}

QJsonObject storeOf(const Nodes::StoreHealth &store)
{
    QJsonObject object{{"waiting", double(store.waiting)},
                       {"aside", double(store.aside)},
                       {"stored", double(store.stored)},
                       {"lost", double(store.lost)}};
    addTime(object, "lastStored", store.lastStored);
    addTime(object, "troubledSince", store.troubledSince);
    addText(object, "trouble", store.trouble);
    return object;
}

const char *stateOf(const Nodes::BasicDriver &driver)
{
    const Nodes::NodeState state = driver.GetState();
    if (!driver.isEnabled())
        return "disabled";
    return state == Nodes::NodeState::Running  ? "running"
           : state == Nodes::NodeState::Failed ? "failed"
                                               : "stopped";
}

} // namespace

StationHealth::StationHealth(const Nodes::systemCore &core, const Host::DataDirectory &directory)
    : m_core(&core), m_directory(&directory)
{
    connect(&m_timer, &QTimer::timeout, this, &StationHealth::tell);
    m_timer.start(lookPeriod);
    look();
}

void StationHealth::look()
{
    if (!m_core)
        return;
    m_journal = m_core->GetJournal().GetHealth();
    if (const Nodes::systemAlarming *alarming = m_core->GetSystemAlarming())
        m_alarms = alarming->GetHealth();
    if (const Nodes::systemArchiver *archiver = m_core->GetSystemArchiver())
        m_archive = archiver->GetHealth();
    m_directoryTrouble = m_directory->trouble();
}

std::string StationHealth::trouble() const
{
    if (!m_directoryTrouble.empty())
        return "data directory: " + m_directoryTrouble;
    if (!m_journal.isWell())
        return "journal: " + m_journal.trouble;
    if (!m_archive.packets.isWell())
        return "archive: " + m_archive.packets.trouble;
    const bool areUnkept = m_alarms.isKeeping && m_alarms.unkept > 0;
    return areUnkept && !m_alarms.trouble.empty() ? "states of alarms: " + m_alarms.trouble
                                                  : std::string();
}

void StationHealth::tell()
{
    look();
    const std::string now = trouble();
    if (!now.empty() && !m_wasTold)
        std::fprintf(stderr,
                     "station: records are at risk: %s; %zu wait in memory, %zu are kept aside\n",
                     now.c_str(), m_journal.waiting + m_archive.packets.waiting,
                     m_journal.aside + m_archive.packets.aside);
    if (now.empty() && m_wasTold)
        std::fprintf(stderr, "station: records are written again\n");
    m_wasTold = !now.empty();
    tellLosses();
}

void StationHealth::tellLosses()
{
    const std::uint64_t lost = m_journal.lost; // those of alarms among them
    if (lost > m_toldLost)
        std::fprintf(stderr, "station: %llu records were lost\n",
                     static_cast<unsigned long long>(lost - m_toldLost));
    m_toldLost = lost;
    if (m_archive.lost > m_toldSamples)
        std::fprintf(stderr, "station: %llu samples of the archive were lost\n",
                     static_cast<unsigned long long>(m_archive.lost - m_toldSamples));
    m_toldSamples = m_archive.lost;
}

QJsonObject StationHealth::records() const
{
    const_cast<StationHealth *>(this)->look();
    QJsonObject records{{"atRisk", !trouble().empty()}, {"journal", storeOf(m_journal)}};
    if (m_archive.isRecording) {
        QJsonObject archive = storeOf(m_archive.packets);
        archive["samples"] = double(m_archive.samples);
        archive["lost"] = double(m_archive.lost);
        records["archive"] = archive;
    }
    if (m_alarms.isKeeping) {
        QJsonObject alarms{{"unkept", double(m_alarms.unkept)},
                           {"refused", double(m_alarms.refused)},
                           {"waiting", double(m_alarms.unannounced)}};
        addTime(alarms, "lastKept", m_alarms.lastKept);
        addTime(alarms, "unkeptSince", m_alarms.unkeptSince);
        addText(alarms, "trouble", m_alarms.trouble);
        records["alarms"] = alarms;
    }
    addText(records, "directoryTrouble", m_directoryTrouble);
    return records;
}

QJsonArray StationHealth::drivers() const
{
    QJsonArray drivers;
    if (!m_core)
        return drivers;
    Nodes::NodeLinks links;
    m_core->GetNodesCollection()->FindNodes(Nodes::NodeType::TypeDriver, &links);
    for (const Nodes::NodeLink &link : links) {
        const auto *driver = dynamic_cast<const Nodes::BasicDriver *>(link.GetNode());
        if (!driver || !driver->IsLocal())
            continue;
        QJsonObject one{{"id", double(driver->GetId())},
                        {"name", QString::fromStdString(driver->GetName())},
                        {"state", stateOf(*driver)}};
        if (const std::optional<bool> isConnected = driver->isConnected())
            one["connected"] = *isConnected;
        drivers.append(one);
    }
    return drivers;
}

void StationHealth::tellAside() const
{
    const auto tell = [this](const char *what, std::size_t count,
                             const std::vector<std::string> &files) {
        std::string places;
        for (const std::string &file : files)
            places += ", " + file;
        if (count > 0)
            std::fprintf(stderr,
                         "station: %zu records could not be written to the %s; they are kept and "
                         "added at the next start: %s%s\n",
                         count, what, m_directory->path().toLocal8Bit().constData(),
                         places.c_str());
    };
    tell("journal", m_journal.aside, m_core->GetJournal().GetFallbackFiles());
    if (const Nodes::systemArchiver *archiver = m_core->GetSystemArchiver())
        tell("archive", m_archive.packets.aside, archiver->GetFallbackFiles());
}

std::uint64_t StationHealth::lostRecords() const
{
    return m_journal.lost + m_journal.waiting + m_alarms.unkept + m_archive.lost +
           m_archive.packets.waiting;
}

void StationHealth::finish()
{
    if (!m_core)
        return;
    m_timer.stop();
    tell();
    tellAside();
    if (lostRecords() > 0)
        std::fprintf(
            stderr,
            "station: lost: %llu records of the journal, %llu of them of alarms, the states of "
            "%zu alarms, %llu samples and %zu groups of samples of the archive\n",
            static_cast<unsigned long long>(m_journal.lost + m_journal.waiting),
            static_cast<unsigned long long>(m_alarms.refused), m_alarms.unkept,
            static_cast<unsigned long long>(m_archive.lost), m_archive.packets.waiting);
    m_core = nullptr;
}

} // namespace Station
