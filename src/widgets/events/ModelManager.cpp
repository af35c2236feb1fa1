#include "widgets/events/ModelManager.h"

#include "widgets/actions/running/Refusals.h"
#include "widgets/events/AlarmSound.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/events/filter/AlarmList.h"
#include "widgets/events/hidden/ModelHidden.h"
#include "widgets/windows/DesktopContext.h"

#include "nodes/alarms/systemAlarming.h"

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
      m_sorting(new AlarmList(*m_model, this)),
      m_hidden(new ModelHidden(this)),
      m_sound(new AlarmSound(this))
{
    readSettings();
    m_soundTimer.setSingleShot(true);
    m_soundTimer.setInterval(soundDelay);
    connect(&m_soundTimer, &QTimer::timeout, this, &ModelManager::updateSound);
}

ModelManager::~ModelManager() = default;

void ModelManager::attach(TableAlarms &table)
{
    table.setAlarms(*m_model, *m_sorting);
    connect(this, &ModelManager::changeBegins, &table, &TableAlarms::keepSight);
    connect(this, &ModelManager::changed, &table, &TableAlarms::restoreSight);
    connect(&table, &TableAlarms::rowDoubleClicked, this,
            QOverload<const QModelIndex &>::of(&ModelManager::acknowledge));
}

void ModelManager::readSettings()
{
    m_model->readSettings(alarmSystem());
}

bool ModelManager::addOrUpdate(const std::vector<Nodes::BasicEvent> &events)
{
    emit changeBegins();
    const ModelAlarms::Taken taken = m_model->take(events);
    follow(taken.isOrderChanged);
    m_hidden->take(events);
    emit changed();
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
    for (int number = 0; number < m_hidden->rowCount(); ++number) {
        if (!alarms.contains(m_hidden->event(number).sourceNode.GetNodeId()))
            continue;
        over.push_back(m_hidden->event(number));
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
    for (const unsigned long alarm : m_hidden->alarms())
        over.insert(alarm);
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
        if (!row.isAcknowledged && row.waitsSince <= revision && m_sorting->shows(row))
            seen.push_back(row.occurrence());
    }
    return seen;
}

ModelManager::Counts ModelManager::counts() const
{
    Counts counts;
    counts.all = m_model->rowCount();
    counts.shown = m_sorting->rowCount();
    for (int number = 0; number < counts.all; ++number) {
        const AlarmRow &row = m_model->row(number);
        if (row.isAcknowledged)
            continue;
        ++counts.waiting;
        if (row.event().priority == 1 && !m_sorting->shows(row))
            ++counts.hiddenUrgent;
    }
    return counts;
}

// The subsystem checks the rights and writes the journal's entries; a refused row stays as it was.
void ModelManager::acknowledge(const Nodes::AlarmOccurrences &seen, const std::string &comment)
{
    Nodes::systemAlarming *alarming = alarmSystem();
    if (seen.empty() || (alarming && !alarming->isAcknowledgeEnabled()))
        return;
    const std::vector<Nodes::Result> results =
        alarming ? alarming->Acknowledge(seen, comment) : std::vector<Nodes::Result>(seen.size());
    std::vector<int> done;
    Nodes::Result refused;
    Nodes::Result overtaken;
    for (std::size_t i = 0; i < seen.size(); ++i) {
        const int number = m_model->rowOf(seen[i].alarm.GetNodeId());
        const bool isShown = number >= 0 && !m_model->row(number).isAcknowledged &&
                             m_model->row(number).event().occurrence == seen[i].occurrence;
        if (isShown && (results[i] || results[i] == Nodes::Result::NotFound))
            done.push_back(number);
        // Somebody else was faster, or the alarm came anew, which the list shows or is about to.
        if (results[i] == Nodes::Result::NotFound || results[i] == Nodes::Result::Refused)
            overtaken = results[i];
        else if (!results[i])
            refused = results[i];
    }
    emit changeBegins();
    follow(m_model->acknowledge(done));
    emit changed();
    updateSound();
    ShowActionResult(refused,
                     seen.size() == 1 ? "Тревога не квитирована" : "Тревоги не квитированы");
    if (!comment.empty() && !overtaken)
        ShowActionError(overtaken == Nodes::Result::NotFound
                            ? QStringLiteral("Комментарий не записан: квитировать уже нечего")
                            : QStringLiteral("Комментарий не записан: тревога возникла снова, "
                                             "квитируйте её"));
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

void ModelManager::setFilter(const AlarmFilter &filter)
{
    emit changeBegins();
    m_sorting->setFilter(filter);
    emit changed();
}

void ModelManager::setGrouped(bool isGrouped)
{
    emit changeBegins();
    m_model->setGrouped(isGrouped);
    m_sorting->setGrouped(isGrouped);
    emit changed();
}

void ModelManager::setFolded(const std::string &area, bool isFolded)
{
    emit changeBegins();
    m_sorting->setFolded(area, isFolded);
    emit changed();
}

void ModelManager::setMuted(bool isMuted)
{
    m_sound->setMuted(isMuted);
}

void ModelManager::setHideInactive(bool isHiding)
{
    emit changeBegins();
    m_sorting->setHideInactive(isHiding);
    emit changed();
}

void ModelManager::setRemoveInactive(bool isRemoving)
{
    emit changeBegins();
    m_model->setRemoveInactive(isRemoving);
    emit changed();
}

void ModelManager::updateSound()
{
    m_sound->setSounds(m_model->sounds());
}

} // namespace Widgets
