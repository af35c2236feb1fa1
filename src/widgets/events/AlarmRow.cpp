#include "widgets/events/AlarmRow.h"

#include "widgets/events/AlarmSoundBook.h"
#include "widgets/events/SortKeys.h"

#include "nodes/alarms/BasicAlarm.h"
#include "nodes/alarms/alarmColumn.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/values/NumberText.h"
#include "utils/convert/TimeConversions.h"
#include "utils/models/SortingModel.h"

#include <charconv>

namespace Widgets {

using Nodes::alarmColumn;
using Nodes::AlarmState;

namespace {

bool isWaiting(const Nodes::BasicEvent &event)
{
    return event.alarmState == AlarmState::ActiveUnacked ||
           event.alarmState == AlarmState::ReturnedUnacked;
}

// The level of a journal entry tells what was done; that of a row how grave the alarm is.
Nodes::BasicEvent listed(Nodes::BasicEvent event)
{
    if (event.priority > 0)
        event.level = Nodes::AlarmLevel(event.priority);
    return event;
}

template <class Value> int order(const Value &left, const Value &right)
{
    return left < right ? -1 : right < left ? 1 : 0;
}

// Numbers by their value, before what is none.
int orderValues(const std::string &left, const std::string &right)
{
    const auto number = [](const std::string &text, double &value) {
        const char *end = text.data() + text.size();
        return std::from_chars(text.data(), end, value).ptr == end && !text.empty();
    };
    double values[2] = {};
    const bool isLeftNumber = number(left, values[0]);
    const bool isRightNumber = number(right, values[1]);
    if (isLeftNumber != isRightNumber)
        return isLeftNumber ? -1 : 1;
    return isLeftNumber ? order(values[0], values[1]) : SortKeys::compare(left, right);
}

// A column stays empty until there is something to tell.
QString timeOrNothing(Nodes::Timestamp time)
{
    return time != 0 ? Utils::timeText(time, Utils::tableTimeFormat) : QString();
}

const std::string &plainText(const Nodes::BasicEvent &event, int kind)
{
    switch (kind) {
    case alarmColumn::Area:
        return event.area;
    case alarmColumn::Source:
        return event.source;
    case alarmColumn::Value:
        return event.newValue;
    case alarmColumn::User:
        return event.user;
    case alarmColumn::Comment:
        return event.comment;
    default:
        return event.text;
    }
}

} // namespace

enAlarmStateCode AlarmStateCode(const Nodes::BasicEvent &event)
{
    switch (event.alarmState) {
    case AlarmState::ActiveUnacked:
    case AlarmState::ActiveAcked:
    case AlarmState::AwaitingReset: // something is still to be done about it
        return AlarmPresent;
    case AlarmState::ReturnedUnacked:
    case AlarmState::Normal:
        return AlarmGone;
    default:
        return AlarmElsewhere;
    }
}

AlarmRow::AlarmRow(const Nodes::BasicEvent &event, unsigned revision,
                   const AlarmSoundDefaults &defaults)
    : info(std::make_unique<Nodes::EventInfo>(listed(event))),
      waitsSince(revision),
      textKey(Utils::SortingModel::textKey(text(alarmColumn::Text))),
      areaKey(&SortKeys::of(area())),
      m_defaults(&defaults)
{
    judge();
    readNode();
}

bool AlarmRow::isToBeListed(const Nodes::BasicEvent &event)
{
    return AlarmStateCode(event) != AlarmElsewhere && event.alarmState != AlarmState::Normal;
}

// Occurrences are numbered upwards, so an announcement that was overtaken is known by its number;
// what was acknowledged of an occurrence stays so. Number 0 tells nothing.
AlarmRow::enNews AlarmRow::take(const Nodes::BasicEvent &news, unsigned revision)
{
    const Nodes::BasicEvent before = event();
    const bool wasAcknowledged = isAcknowledged;
    const bool isNumbered = news.occurrence != 0;
    const bool isSame = news.occurrence == before.occurrence;
    if (isNumbered && news.occurrence < before.occurrence)
        return Nothing;
    if (isNumbered && isSame && wasAcknowledged && isWaiting(news))
        return Nothing;
    if (!info->Update(listed(news)))
        return Nothing;
    if (news.text != before.text || news.area != before.area)
        readTexts();
    judge();
    if (!isSame || !isNumbered)
        readNode();
    const bool isAnew = !isSame || (wasAcknowledged && !isAcknowledged);
    if (isAnew)
        waitsSince = revision;
    const bool isChanged = !isAcknowledged && (news.alarmState != before.alarmState ||
                                               news.reminders > before.reminders);
    const bool isPresent = stateCode == AlarmPresent && news.type != Nodes::TypeAcknowledgement;
    return isChanged || (isAnew && (!isAcknowledged || isPresent)) ? ToBeSeen : Minor;
}

void AlarmRow::readTexts()
{
    textKey = Utils::SortingModel::textKey(text(alarmColumn::Text));
    areaKey = &SortKeys::of(area());
    m_searched.clear();
}

bool AlarmRow::contains(const QString &lowerCase) const
{
    if (m_searched.isNull())
        m_searched =
            QString::fromStdString(event().text + '\n' + area() + '\n' + event().source).toLower();
    return m_searched.contains(lowerCase);
}

void AlarmRow::judge()
{
    stateCode = AlarmStateCode(event());
    isFirstUp = event().isFirstUp;
    isAcknowledged = !isWaiting(event());
    soundState = isAcknowledged ? SoundAcknowledged : hasSound() ? SoundPlaying : SoundNone;
}

bool AlarmRow::hasSound() const
{
    return !soundFile.isEmpty() || m_defaults->hasTones;
}

void AlarmRow::readNode()
{
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(event().sourceNode.GetNode());
    soundFile = alarm ? QString::fromStdString(alarm->GetSound().GetFullFilePath()) : QString();
    if (soundFile.isEmpty())
        soundFile = m_defaults->file(event().priority);
    judge();
}

void AlarmRow::acknowledge()
{
    isAcknowledged = true;
    soundState = SoundAcknowledged;
}

AlarmState AlarmRow::state() const
{
    const AlarmState told = event().alarmState;
    if (!isAcknowledged)
        return told;
    return told == AlarmState::ActiveUnacked     ? AlarmState::ActiveAcked
           : told == AlarmState::ReturnedUnacked ? AlarmState::Normal
                                                 : told;
}

Nodes::Timestamp AlarmRow::raised() const
{
    return event().raised != 0 ? event().raised : event().time;
}

int AlarmRow::urgency() const
{
    const bool isPresent = stateCode == AlarmPresent;
    const int group = isAcknowledged ? (isPresent ? 20 : 30) : (isPresent ? 0 : 10);
    return group + event().priority;
}

QString AlarmRow::text(int kind) const
{
    switch (kind) {
    case alarmColumn::Group: {
        Nodes::BasicEvent shown = event();
        shown.alarmState = state();
        return QString::fromStdString(Nodes::EventInfo(std::move(shown)).GetGroupString());
    }
    case alarmColumn::Time:
        return Utils::timeText(raised(), Utils::tableTimeFormat);
    case alarmColumn::Level:
        return QString::fromStdString(info->GetEventLevel());
    case alarmColumn::Priority:
        return QString::number(event().priority);
    case alarmColumn::Value:
        return valueText(event());
    case alarmColumn::Acknowledged:
        return timeOrNothing(event().acknowledged);
    case alarmColumn::Returned:
        return timeOrNothing(event().returned);
    default:
        return QString::fromStdString(plainText(event(), kind));
    }
}

QString AlarmRow::valueText(const Nodes::BasicEvent &event)
{
    const std::string &value = event.newValue;
    if (value == "true" || value == "false")
        return value == "true" ? QStringLiteral("да") : QStringLiteral("нет");
    const auto *alarm = dynamic_cast<const Nodes::BasicAlarm *>(event.sourceNode.GetNode());
    const Nodes::BasicSignal *signal = alarm ? alarm->GetSignal() : nullptr;
    const std::optional<double> number = Nodes::ParseDouble(value);
    if (!signal || !number)
        return QString::fromStdString(value);
    const bool isWhole = signal->GetValueType() != Nodes::enSignalValueType::Double;
    const std::string text = isWhole ? value : Nodes::FormatShown(*number, signal->GetDecimals());
    const std::string &unit = signal->GetUnit();
    return QString::fromStdString(unit.empty() ? text : text + " " + unit);
}

int AlarmRow::compare(const AlarmRow &other, int kind) const
{
    switch (kind) {
    case alarmColumn::Number:
        return 0; // as they came
    case alarmColumn::Group:
        return order(urgency(), other.urgency());
    case alarmColumn::Time:
        return order(raised(), other.raised());
    case alarmColumn::Level:
        return order(int(event().level), int(other.event().level));
    case alarmColumn::Priority:
        return order(event().priority, other.event().priority);
    case alarmColumn::Text:
        return textKey.compare(other.textKey);
    case alarmColumn::Area:
        return areaKey == other.areaKey ? 0 : areaKey->compare(*other.areaKey);
    case alarmColumn::Value:
        return orderValues(event().newValue, other.event().newValue);
    case alarmColumn::Acknowledged:
        return order(event().acknowledged, other.event().acknowledged);
    case alarmColumn::Returned:
        return order(event().returned, other.event().returned);
    default:
        return SortKeys::compare(plainText(event(), kind), plainText(other.event(), kind));
    }
}

} // namespace Widgets
