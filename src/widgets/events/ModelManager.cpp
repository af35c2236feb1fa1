#include "widgets/events/ModelManager.h"

#include "widgets/actions/running/Refusals.h"
#include "widgets/events/AlarmSound.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/alarms/systemAlarming.h"
#include "utils/models/SortingModel.h"

namespace Widgets {

namespace {

constexpr int soundDelay = 100; // ms

Nodes::systemAlarming *alarmSystem()
{
    return DesktopContext::alarming();
}

} // namespace

ModelManager::ModelManager(QObject *parent)
    : QObject(parent),
      m_model(new ModelAlarms(this)),
      m_sorting(new Utils::SortingModel(this)),
      m_sound(new AlarmSound(this))
{
    readSettings();
    // Sorted once for a batch, by follow().
    m_sorting->setDynamicSortFilter(false);
    m_sorting->setComparison(
        [this](int column, int left, int right) { return m_model->compare(column, left, right); });
    m_sorting->setInactiveTest(
        [this](const QModelIndex &row) { return m_model->row(row.row()).isInactive(); });
    m_sorting->setSourceModel(m_model);
    m_soundTimer.setSingleShot(true);
    m_soundTimer.setInterval(soundDelay);
    connect(&m_soundTimer, &QTimer::timeout, this, &ModelManager::updateSound);
}

ModelManager::~ModelManager() = default;

void ModelManager::attach(TableAlarms &table)
{
    table.setAlarms(*m_model, *m_sorting);
    connect(&table, &TableAlarms::rowDoubleClicked, this,
            QOverload<const QModelIndex &>::of(&ModelManager::acknowledge));
}

void ModelManager::readSettings()
{
    m_model->readSettings(alarmSystem());
}

bool ModelManager::addOrUpdate(const std::vector<Nodes::BasicEvent> &events)
{
    const ModelAlarms::Taken taken = m_model->take(events);
    follow(taken.isOrderChanged);
    if (!m_soundTimer.isActive())
        m_soundTimer.start();
    return taken.isNews;
}

void ModelManager::follow(bool isOrderChanged)
{
    if (isOrderChanged)
        m_sorting->updateSort();
}

void ModelManager::forget(const QSet<unsigned long> &alarms)
{
    std::vector<Nodes::BasicEvent> over;
    for (int number = 0; number < m_model->rowCount(); ++number) {
        if (!alarms.contains(m_model->row(number).alarm()))
            continue;
        over.push_back(m_model->row(number).event());
        over.back().alarmState = Nodes::AlarmState::Normal;
    }
    if (!over.empty())
        (void)addOrUpdate(over);
}

void ModelManager::refresh()
{
    const Nodes::systemAlarming *alarming = alarmSystem();
    if (!alarming || alarming->GetState() != Nodes::NodeState::Running)
        return;
    const std::vector<Nodes::BasicEvent> events = alarming->GetActiveAlarms();
    QSet<unsigned long> over;
    for (int number = 0; number < m_model->rowCount(); ++number)
        over.insert(m_model->row(number).alarm());
    for (const Nodes::BasicEvent &event : events)
        over.remove(event.sourceNode.GetNodeId());
    (void)addOrUpdate(events);
    forget(over);
}

Nodes::AlarmOccurrences ModelManager::waiting(unsigned revision) const
{
    Nodes::AlarmOccurrences seen;
    for (int number = 0; number < m_model->rowCount(); ++number) {
        const AlarmRow &row = m_model->row(number);
        if (!row.isAcknowledged && row.waitsSince <= revision)
            seen.push_back(row.occurrence());
    }
    return seen;
}

// The subsystem checks the rights and writes the journal's entries; a refused row stays as it was.
void ModelManager::acknowledge(const Nodes::AlarmOccurrences &seen)
{
    Nodes::systemAlarming *alarming = alarmSystem();
    if (seen.empty() || (alarming && !alarming->isAcknowledgeEnabled()))
        return;
    const std::vector<Nodes::Result> results =
        alarming ? alarming->Acknowledge(seen) : std::vector<Nodes::Result>(seen.size());
    std::vector<int> done;
    Nodes::Result refused;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const int number = m_model->rowOf(seen[i].alarm.GetNodeId());
        const bool isShown = number >= 0 && !m_model->row(number).isAcknowledged &&
                             m_model->row(number).event().occurrence == seen[i].occurrence;
        // Nothing to acknowledge: somebody else was faster.
        if (isShown && (results[i] || results[i] == Nodes::Result::NotFound))
            done.push_back(number);
        // The alarm came anew, which the list shows or is about to.
        else if (!results[i] && results[i] != Nodes::Result::NotFound &&
                 results[i] != Nodes::Result::Refused)
            refused = results[i];
    }
    follow(m_model->acknowledge(done));
    updateSound();
    ShowActionResult(refused,
                     seen.size() == 1 ? "Тревога не квитирована" : "Тревоги не квитированы");
}

void ModelManager::acknowledge(const QModelIndex &index)
{
    if (index.isValid() && index.model() == m_model && !m_model->row(index.row()).isAcknowledged)
        acknowledge(Nodes::AlarmOccurrences{m_model->row(index.row()).occurrence()});
}

void ModelManager::acknowledgeAll()
{
    acknowledge(waiting(m_model->revision()));
}

void ModelManager::setMuted(bool isMuted)
{
    m_sound->setMuted(isMuted);
}

void ModelManager::setHideInactive(bool isHiding)
{
    m_sorting->setHideInactive(isHiding);
}

void ModelManager::setRemoveInactive(bool isRemoving)
{
    m_model->setRemoveInactive(isRemoving);
}

void ModelManager::updateSound()
{
    m_sound->setFiles(m_model->soundFiles());
}

} // namespace Widgets
