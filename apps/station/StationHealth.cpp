#include "apps/station/StationHealth.h"

#include "apps/common/desktop/DataDirectory.h"

#include "nodes/alarms/systemAlarming.h"
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
    m_directoryTrouble = m_directory->trouble();
}

std::string StationHealth::trouble() const
{
    if (!m_directoryTrouble.empty())
        return "data directory: " + m_directoryTrouble;
    if (!m_journal.isWell())
        return "journal: " + m_journal.trouble;
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
                     now.c_str(), m_journal.waiting, m_journal.aside);
    if (now.empty() && m_wasTold)
        std::fprintf(stderr, "station: records are written again\n");
    m_wasTold = !now.empty();
    const std::uint64_t lost = m_journal.lost; // those of alarms among them
    if (lost > m_toldLost)
        std::fprintf(stderr, "station: %llu records were lost\n",
                     static_cast<unsigned long long>(lost - m_toldLost));
    m_toldLost = lost;
}

QJsonObject StationHealth::records() const
{
    const_cast<StationHealth *>(this)->look();
    QJsonObject journal{{"waiting", double(m_journal.waiting)},
                        {"aside", double(m_journal.aside)},
                        {"stored", double(m_journal.stored)},
                        {"lost", double(m_journal.lost)}};
    addTime(journal, "lastStored", m_journal.lastStored);
    addTime(journal, "troubledSince", m_journal.troubledSince);
    addText(journal, "trouble", m_journal.trouble);
    QJsonObject records{{"atRisk", !trouble().empty()}, {"journal", journal}};
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

std::uint64_t StationHealth::lostRecords() const
{
    return m_journal.lost + m_journal.waiting + m_alarms.unkept;
}

void StationHealth::finish()
{
    if (!m_core)
        return;
    m_timer.stop();
    tell();
    if (m_journal.aside > 0) {
        std::string places;
        for (const std::string &file : m_core->GetJournal().GetFallbackFiles())
            places += ", " + file;
        std::fprintf(stderr,
                     "station: %zu records could not be written to the journal; they are kept and "
                     "added at the next start: %s%s\n",
                     m_journal.aside, m_directory->path().toLocal8Bit().constData(),
                     places.c_str());
    }
    if (lostRecords() > 0)
        std::fprintf(
            stderr,
            "station: lost: %llu records of the journal, %llu of them of alarms, the states of "
            "%zu alarms\n",
            static_cast<unsigned long long>(m_journal.lost + m_journal.waiting),
            static_cast<unsigned long long>(m_alarms.refused), m_alarms.unkept);
    m_core = nullptr;
}

} // namespace Station
