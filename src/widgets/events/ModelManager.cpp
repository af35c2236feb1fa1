#include "widgets/events/ModelManager.h"

#include "widgets/events/AlarmSound.h"
#include "widgets/events/ModelAlarms.h"
#include "widgets/events/TableAlarms.h"
#include "widgets/windows/Access.h"
#include "widgets/windows/WindowManager.h"

#include "nodes/alarms/systemAlarming.h"
#include "utils/SortingModel.h"

#include <QSet>

namespace Widgets {

namespace {

constexpr int soundDelay = 100; // ms

Nodes::systemAlarming *alarmSystem()
{
    return g_pWindowManager ? g_pWindowManager->getSystemAlarming() : nullptr;
}

} // namespace

ModelManager::ModelManager(QObject *parent)
    : QObject(parent),
      m_model(new ModelAlarms(this)),
      m_sorting(new Utils::SortingModel(this)),
      m_sound(new AlarmSound(this))
{
    readSettings();
    m_sorting->setSortRole(ModelAlarms::SortRole);
    m_sorting->setInactiveTest(
        [this](const QModelIndex &row) { return m_model->isInactive(row.row()); });
    m_sorting->setSourceModel(m_model);
    m_soundTimer.setSingleShot(true);
    m_soundTimer.setInterval(soundDelay);
    connect(&m_soundTimer, &QTimer::timeout, this, &ModelManager::updateSound);
}

ModelManager::~ModelManager() = default;

void ModelManager::attach(TableAlarms &table)
{
    table.setAlarms(*m_model, *m_sorting);
    connect(&table, &TableAlarms::rowDoubleClicked, this, &ModelManager::acknowledge);
}

void ModelManager::readSettings()
{
    m_model->readSettings(alarmSystem());
}

void ModelManager::addOrUpdate(const Nodes::BasicEvent &event)
{
    const int row = m_model->rowOf(event);
    const bool isListed = AlarmStateCode(event) != AlarmElsewhere;
    if (row >= 0 && isListed) {
        if (m_model->update(row, event))
            removeWhenInactive(row);
    } else if (row >= 0) {
        m_model->removeRow(row);
    } else if (isListed && event.alarmState != Nodes::AlarmState::Normal) {
        m_model->append(event);
    }
    if (!m_soundTimer.isActive())
        m_soundTimer.start();
}

void ModelManager::refresh()
{
    const Nodes::systemAlarming *alarming = alarmSystem();
    if (!alarming || alarming->GetState() != Nodes::NodeState::Running)
        return;
    QSet<unsigned long> active;
    for (const Nodes::BasicEvent &event : alarming->GetActiveAlarms()) {
        active.insert(event.sourceNode.GetNodeId());
        addOrUpdate(event);
    }
    for (int row = m_model->rowCount() - 1; row >= 0; --row) {
        Nodes::BasicEvent event = m_model->info(row).GetEvent();
        event.alarmState = Nodes::AlarmState::Normal;
        if (!active.contains(event.sourceNode.GetNodeId()))
            addOrUpdate(event);
    }
}

// The subsystem checks the right and writes the journal's entry; a refused row stays as it was.
Nodes::Result ModelManager::acknowledgeRow(int row, bool isAskedFirst)
{
    const Nodes::NodeLink alarm = m_model->info(row).GetEvent().sourceNode;
    Nodes::systemAlarming *alarming = alarmSystem();
    const bool isKnown = m_model->index(row, 0).data(ModelAlarms::AcknowledgedRole).toBool();
    if (isKnown)
        return {};
    if (isAskedFirst && !HasPrivilege(Nodes::PrivilegeAcknowledge, alarm.GetNode()))
        return Nodes::Result(Nodes::Result::AccessDenied);
    Nodes::Result result;
    if (alarming)
        result = alarming->Acknowledge(alarm);
    // Nothing to acknowledge: somebody else was faster.
    if (result || result == Nodes::Result::NotFound) {
        confirm(row);
        return {};
    }
    return result;
}

void ModelManager::confirm(int row)
{
    const QModelIndex index = m_model->index(row, 0);
    m_model->setData(index, SoundAcknowledged, ModelAlarms::SoundStateRole);
    m_model->setData(index, true, ModelAlarms::AcknowledgedRole);
    removeWhenInactive(row);
}

void ModelManager::acknowledge(const QModelIndex &index)
{
    if (!index.isValid() || index.model() != m_model)
        return;
    const Nodes::Result result = acknowledgeRow(index.row(), false);
    updateSound();
    ShowActionResult(result, "Тревога не квитирована");
}

void ModelManager::acknowledgeAll()
{
    Nodes::Result refused;
    // From the end: rows that are done with go at once. One refusal in the journal is enough.
    for (int row = m_model->rowCount() - 1; row >= 0; --row) {
        const Nodes::Result result = acknowledgeRow(row, !refused);
        if (!result)
            refused = result;
    }
    updateSound();
    ShowActionResult(refused, "Тревоги не квитированы");
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
    m_isRemoving = isRemoving;
    for (int row = m_model->rowCount() - 1; row >= 0; --row)
        removeWhenInactive(row);
}

void ModelManager::removeWhenInactive(int row)
{
    if (m_isRemoving && m_model->isInactive(row))
        m_model->removeRow(row);
}

void ModelManager::updateSound()
{
    QStringList files;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        const QString file = index.data(ModelAlarms::SoundFileRole).toString();
        if (index.data(ModelAlarms::SoundStateRole) == SoundPlaying && !files.contains(file))
            files.append(file);
    }
    m_sound->setFiles(files);
}

} // namespace Widgets
