#include "nodes/alarms/systemAlarming.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/engine/AlarmCondition.h"
#include "nodes/alarms/engine/AlarmEngine.h"
#include "nodes/alarms/engine/RecordsAlarm.h"
#include "nodes/alarms/state/AlarmStateStore.h"
#include "nodes/alarms/suppression/SuppressionScripts.h"
#include "nodes/archive/systemArchiver.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/KindBuilder.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"
#include "nodes/values/Clock.h"

#include <algorithm>

namespace Nodes {

namespace {

constexpr int longestShelf = 86400; // s

} // namespace

systemAlarming::systemAlarming()
    : m_recordsAlarm(std::make_unique<RecordsAlarm>()),
      m_scripts(std::make_unique<SuppressionScripts>()),
      m_engine(std::make_shared<AlarmEngine>())
{
}
systemAlarming::~systemAlarming()
{
    m_recordsAlarm->Stop();
    m_scripts->Stop();
    m_engine->Stop(); // which feeds may keep
}

KindInfo systemAlarming::Kind()
{
    return KindBuilder::For<systemAlarming>("alarming", "Alarms", "Тревоги")
        .Children(
            {NodeType::TypeAlarm, NodeType::TypeFolder, NodeType(NodeType::SubtypeAlarmColumn)})
        .Property<&systemAlarming::m_isWindowEnabled>(Prop::Window, "Alarm window comes up",
                                                      "Показывать окно тревог")
        .Property<&systemAlarming::m_isAcknowledgeEnabled>(
            Prop::Acknowledge, "Acknowledge in the window", "Квитирование в окне")
        .Property<&systemAlarming::m_soundButton>(Prop::SoundButton, "Sound button", "Кнопка звука")
        .Choice(0, "hidden", "Скрыта")
        .Choice(1, "shown", "Показана")
        .Property<&systemAlarming::m_buttonSize>(Prop::ButtonSize, "Button size, px",
                                                 "Размер кнопок, пкс")
        .Range(24, 160)
        .Property<&systemAlarming::m_fontFamily>(Prop::FontFamily, "Font family", "Шрифт")
        .Property<&systemAlarming::m_fontSize>(Prop::FontSize, "Font size, pt", "Размер шрифта, пт")
        .Range(6, 72)
        .Property<&systemAlarming::m_headerFontSize>(Prop::HeaderFontSize, "Header font size, pt",
                                                     "Размер шрифта заголовка, пт")
        .Range(6, 72)
        .Property<&systemAlarming::m_isHeaderBold>(Prop::HeaderBold, "Bold header",
                                                   "Полужирный заголовок")
        .Property<&systemAlarming::m_sound1>(Prop::Sound1, "Sound of priority 1",
                                             "Звук приоритета 1")
        .Hint("wav")
        .Property<&systemAlarming::m_sound2>(Prop::Sound2, "Sound of priority 2",
                                             "Звук приоритета 2")
        .Hint("wav")
        .Property<&systemAlarming::m_sound3>(Prop::Sound3, "Sound of priority 3",
                                             "Звук приоритета 3")
        .Hint("wav")
        .Property<&systemAlarming::m_sound4>(Prop::Sound4, "Sound of priority 4",
                                             "Звук приоритета 4")
        .Hint("wav")
        .Property<&systemAlarming::m_hasTones>(Prop::Tones, "Tones of alarms without a sound",
                                               "Тоны тревог без звука")
        .Property<&systemAlarming::m_floodBegin>(Prop::FloodBegin,
                                                 "Flood begins with more than, in 10 min",
                                                 "Лавина тревог: больше за 10 мин")
        .Range(2, 1000)
        .Property<&systemAlarming::m_floodEnd>(Prop::FloodEnd,
                                               "Flood ends with fewer than, in 10 min",
                                               "Конец лавины: меньше за 10 мин")
        .Range(1, 1000);
}

ResourceLink systemAlarming::GetSound(int priority) const
{
    switch (priority) {
    case 1:
        return m_sound1;
    case 2:
        return m_sound2;
    case 3:
        return m_sound3;
    case 4:
        return m_sound4;
    default:
        return ResourceLink();
    }
}

std::vector<const alarmColumn *> systemAlarming::GetColumns() const
{
    std::vector<const alarmColumn *> columns;
    for (ConfigNode *node : GetObjects(NodeType(NodeType::SubtypeAlarmColumn)))
        columns.push_back(static_cast<const alarmColumn *>(node));
    return columns;
}

/// What all alarms of this station watch; those that cannot are told of.
std::vector<AlarmInputs> systemAlarming::collect()
{
    NodeLinks links;
    if (const NodesCollection *project = GetNodesCollection())
        project->FindNodes(NodeType::TypeAlarm, &links);
    std::vector<AlarmInputs> alarms;
    for (const NodeLink &link : links) {
        const auto *alarm = dynamic_cast<const BasicAlarm *>(link.GetNode());
        if (!alarm || !alarm->IsLocal())
            continue;
        if (!alarm->GetSignal()) {
            StoreMessage(LevelWarning, "Тревога не следит ни за чем: сигнал не указан", link);
            continue;
        }
        if (alarm->isSuppressorGone())
            StoreMessage(LevelWarning, "Тревога не подавляется: сигнала её условия подавления нет",
                         link);
        alarms.push_back(alarm->MakeInputs(*m_scripts));
    }
    return alarms;
}

Result systemAlarming::Start()
{
    if (GetState() == NodeState::Running)
        return Result();
    std::vector<AlarmInputs> alarms = collect();
    const systemCore *core = GetCore();
    std::unique_ptr<AlarmStateStore> states;
    Result found;
    if (core)
        found = AlarmStateStores().Make(core->GetRecordLocation("alarms"), core->GetRecordHome(),
                                        states);
    if (!found)
        StoreMessage(LevelWarning, "Состояния тревог не сохраняются: " + found.GetDetail(),
                     GetNodeLink());
    EventJournal *journal = core ? &core->GetJournal() : nullptr;
    if (journal)
        alarms.insert(alarms.begin(), m_recordsAlarm->Describe(GetNodeLink()));
    m_engine->SetFloodLimits(m_floodBegin, std::min(m_floodEnd, m_floodBegin));
    m_engine->Start(alarms, journal, std::move(states));
    m_scripts->Start([this](const NodeLink &alarm, const std::string &error) {
        m_engine->Report(LevelWarning,
                         "Тревога не подавляется, её условие не вычисляется: " + error, alarm);
    });
    const systemArchiver *archiver = core ? core->GetSystemArchiver() : nullptr;
    if (journal)
        m_recordsAlarm->Start(
            {[journal] { return journal->GetHealth(); }, [this] { return m_engine->GetHealth(); },
             [archiver] { return archiver ? archiver->GetHealth() : ArchiveHealth(); }});
    return ConfigNode::Start();
}

Result systemAlarming::Stop()
{
    m_recordsAlarm->Stop();
    m_scripts->Stop();
    m_engine->Stop();
    return ConfigNode::Stop();
}

std::vector<BasicEvent> systemAlarming::GetActiveAlarms() const
{
    return m_engine->GetActive();
}

std::vector<BasicEvent> systemAlarming::GetActiveAlarms(const BasicSignal &signal) const
{
    return m_engine->GetActive(*signal.GetCell());
}

std::vector<BasicEvent> systemAlarming::GetHiddenAlarms() const
{
    return m_engine->GetHidden();
}

/// The user may do it; who that is.
Result systemAlarming::permit(const NodeLink &alarm, AuthPriv privilege, std::string &user)
{
    if (GetState() != NodeState::Running)
        return Result(this, Result::NotAvailable, "alarming is not running");
    const ConfigNode *guarded = alarm.GetNode() ? alarm.GetNode() : this;
    user = UserNameFor(*guarded);
    if (CheckAccess(privilege.GetType(), *guarded))
        return Result();
    refuse(alarm, user, "Действие с тревогой отклонено: нет прав");
    return Result(this, Result::AccessDenied);
}

Result systemAlarming::operate(const NodeLink &alarm, AuthPriv privilege, const Change &change)
{
    std::string user;
    const Result permitted = permit(alarm, privilege, user);
    if (!permitted)
        return permitted;
    return m_engine->Operate(
        alarm, [&](AlarmTracker &tracker, const AlarmMoment &now, AlarmTracker::Records &records) {
            return change(tracker, now, user, records);
        });
}

void systemAlarming::refuse(const NodeLink &alarm, const std::string &user, const std::string &what)
{
    m_engine->Report(LevelSecurity, what, alarm, user, TypeSecurityEvent);
}

Result systemAlarming::Acknowledge(const NodeLink &alarm, unsigned long occurrence,
                                   const std::string &comment)
{
    return operate(alarm, PrivilegeAcknowledge,
                   [&](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                       AlarmTracker::Records &records) {
                       return tracker.Acknowledge(occurrence, user, comment, now, records);
                   });
}

std::vector<Result> systemAlarming::Acknowledge(const AlarmOccurrences &alarms,
                                                const std::string &comment)
{
    if (GetState() != NodeState::Running)
        return {alarms.size(), Result(this, Result::NotAvailable, "alarming is not running")};
    std::vector<Result> results(alarms.size());
    std::vector<unsigned long> ids(alarms.size());
    std::vector<std::string> users(alarms.size());
    const AlarmOccurrence *refused = nullptr;
    std::size_t refusals = 0;
    for (std::size_t i = 0; i < alarms.size(); ++i) {
        const ConfigNode *node = alarms[i].alarm.GetNode();
        const ConfigNode &guarded = node ? *node : *this;
        ids[i] = alarms[i].alarm.GetNodeId();
        users[i] = UserNameFor(guarded);
        results[i] = CheckAccess(PrivilegeAcknowledge, guarded);
        if (!results[i] && refusals++ == 0)
            refused = &alarms[i];
    }
    if (refused)
        refuse(refused->alarm, users[std::size_t(refused - alarms.data())],
               "Квитирование отклонено: нет прав, тревог: " + std::to_string(refusals));
    const auto acknowledge = [&](std::size_t index, AlarmTracker &tracker, const AlarmMoment &now,
                                 AlarmTracker::Records &records) {
        return tracker.Acknowledge(alarms[index].occurrence, users[index], comment, now, records);
    };
    m_engine->Operate(ids, acknowledge, results);
    return results;
}

Result systemAlarming::AcknowledgeSeen(const NodeLink &alarm, Timestamp seenBy,
                                       const std::string &comment)
{
    return operate(alarm, PrivilegeAcknowledge,
                   [&](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                       AlarmTracker::Records &records) {
                       return tracker.AcknowledgeSeen(seenBy, user, comment, now, records);
                   });
}

Result systemAlarming::Acknowledge(const NodeLink &alarm, const std::string &comment)
{
    return AcknowledgeSeen(alarm, Clock::Current().Steady(), comment);
}

Result systemAlarming::Shelve(const NodeLink &alarm, int seconds, const std::string &reason)
{
    if (seconds < 1 || seconds > longestShelf)
        return Result(this, Result::OutOfRange,
                      "shelving for " + std::to_string(seconds) + " s, 1.." +
                          std::to_string(longestShelf));
    return operate(alarm, PrivilegeShelve,
                   [&](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                       AlarmTracker::Records &records) {
                       tracker.Shelve(Timestamp(seconds) * 1000000, user, now, records, reason);
                       return Result();
                   });
}

Result systemAlarming::Unshelve(const NodeLink &alarm)
{
    return operate(alarm, PrivilegeShelve,
                   [](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                      AlarmTracker::Records &records) {
                       if (!tracker.isShelved())
                           return Result(Result::NotFound, "not shelved");
                       tracker.Unshelve(user, now, records);
                       return Result();
                   });
}

Result systemAlarming::SetOutOfService(const NodeLink &alarm, bool out, const std::string &reason)
{
    return operate(alarm, PrivilegeShelve,
                   [&](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                       AlarmTracker::Records &records) {
                       tracker.SetOutOfService(out, user, now, records, reason);
                       return Result();
                   });
}

Result systemAlarming::SetSuppressed(const NodeLink &alarm, bool suppressed,
                                     const std::string &reason)
{
    return operate(alarm, PrivilegeShelve,
                   [&](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
                       AlarmTracker::Records &records) {
                       tracker.SetSuppressed(suppressed, user, now, records, reason);
                       return Result();
                   });
}

Result systemAlarming::Reset(const NodeLink &alarm)
{
    return operate(
        alarm, PrivilegeAcknowledge,
        [](AlarmTracker &tracker, const AlarmMoment &now, const std::string &user,
           AlarmTracker::Records &records) { return tracker.Reset(user, now, records); });
}

AlarmTuning systemAlarming::GetTuning(const NodeLink &alarm) const
{
    return m_engine->GetTuning(alarm.GetNodeId());
}

Result systemAlarming::Tune(const NodeLink &alarm, const AlarmTuning &tuning)
{
    std::string user;
    const Result permitted = permit(alarm, PrivilegeConfigure, user);
    return permitted ? m_engine->Tune(alarm, tuning, user) : permitted;
}

Result systemAlarming::RevertTuning(const NodeLink &alarm)
{
    std::string user;
    const Result permitted = permit(alarm, PrivilegeConfigure, user);
    return permitted ? m_engine->Tune(alarm, std::nullopt, user) : permitted;
}

std::vector<TunedAlarm> systemAlarming::GetTuned() const
{
    return m_engine->GetTuned();
}

AlarmFlood systemAlarming::GetFlood() const
{
    return m_engine->GetFlood();
}

Connection systemAlarming::ConnectFlood(std::function<void(const AlarmFlood &)> slot)
{
    return m_engine->ConnectFlood(std::move(slot));
}

Connection systemAlarming::ConnectAlarm(std::function<void(const BasicEvent &)> slot)
{
    return m_engine->Connect(std::move(slot));
}

std::unique_ptr<AlarmFeed> systemAlarming::OpenFeed(std::function<void()> wake)
{
    return std::make_unique<AlarmFeed>(m_engine, m_engine->OpenFeed(std::move(wake)));
}

AlarmHealth systemAlarming::GetHealth() const
{
    return m_engine->GetHealth();
}

} // namespace Nodes
