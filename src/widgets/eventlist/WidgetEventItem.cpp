#include "widgets/eventlist/WidgetEventItem.h"

#include "widgets/eventlist/OneLine.h"

#include "nodes/events/EventInfo.h"
#include "nodes/visual/events/ColumnInfo.h"
#include "utils/convert/TimeConversions.h"

#include <algorithm>
#include <tuple>

namespace Widgets {

using Nodes::ColumnInfo;

namespace {

std::uint8_t byteOf(int code)
{
    return std::uint8_t(std::clamp(code, 0, 255));
}

// Level, type and group in words: what of the event those depend on.
Nodes::EventInfo infoOf(const WidgetEventItem &item)
{
    Nodes::BasicEvent event;
    event.level = Nodes::EventLevel(item.level());
    event.type = Nodes::EventType(item.type());
    event.alarmState = item.alarmState();
    event.priority = item.priority();
    return Nodes::EventInfo(event);
}

} // namespace

WidgetEventItem::WidgetEventItem(const Nodes::EventInfo &info, EventPool &pool)
    : m_pool(&pool),
      m_time(info.GetEvent().time),
      m_id(info.GetEvent().id),
      m_text(pool.texts.add(info.GetEvent().text)),
      m_user(pool.texts.add(info.GetEvent().user)),
      m_oldValue(pool.texts.add(info.GetEvent().oldValue)),
      m_newValue(pool.texts.add(info.GetEvent().newValue)),
      m_source(pool.addSource(info.GetEvent().source, info.GetEvent().sourceNode)),
      m_level(byteOf(info.GetEvent().level)),
      m_type(byteOf(info.GetEvent().type)),
      m_alarmState(byteOf(int(info.GetEvent().alarmState))),
      m_priority(byteOf(info.GetEvent().priority))
{
}

QString WidgetEventItem::valueText() const
{
    const QString before = m_pool->texts.string(m_oldValue);
    const QString after = m_pool->texts.string(m_newValue);
    return before.isEmpty() ? after : before + QStringLiteral(" → ") + after;
}

QVariant WidgetEventItem::data(int column) const
{
    const EventTexts &texts = m_pool->texts;
    switch (column) {
    case ColumnInfo::ColumnTime:
        return Utils::timeText(m_time, Utils::tableTimeFormat);
    case ColumnInfo::ColumnLevel:
        return QString::fromStdString(infoOf(*this).GetEventLevel());
    case ColumnInfo::ColumnType:
        return QString::fromStdString(infoOf(*this).GetEventType());
    case ColumnInfo::ColumnText:
        return OneLine(texts.view(m_text));
    case ColumnInfo::ColumnGroup:
        return QString::fromStdString(infoOf(*this).GetGroupString());
    case ColumnInfo::ColumnSource:
        return OneLine(texts.view(source().name));
    case ColumnInfo::ColumnUser:
        return OneLine(texts.view(m_user));
    case ColumnInfo::ColumnValue:
        return OneLine(valueText());
    default:
        return {};
    }
}

QVariant WidgetEventItem::sortData(const ColumnInfo *column) const
{
    switch (column->column) {
    case ColumnInfo::ColumnTime:
        return qlonglong(m_time);
    case ColumnInfo::ColumnLevel:
        return level();
    case ColumnInfo::ColumnType:
        return type();
    case ColumnInfo::ColumnGroup:
        return int(m_alarmState) * 256 + m_priority;
    default:
        return data(column->column);
    }
}

Nodes::BasicEvent WidgetEventItem::event() const
{
    const EventTexts &texts = m_pool->texts;
    Nodes::BasicEvent event;
    event.id = m_id;
    event.time = m_time;
    event.level = Nodes::EventLevel(m_level);
    event.type = Nodes::EventType(m_type);
    event.text = texts.view(m_text);
    event.source = texts.view(source().name);
    event.sourceNode = source().node;
    event.user = texts.view(m_user);
    event.oldValue = texts.view(m_oldValue);
    event.newValue = texts.view(m_newValue);
    event.alarmState = alarmState();
    event.priority = m_priority;
    return event;
}

bool WidgetEventItem::isCut() const
{
    const EventTexts &texts = m_pool->texts;
    return texts.isCut(m_text) || texts.isCut(m_oldValue) || texts.isCut(m_newValue) ||
           texts.isCut(m_user) || texts.isCut(source().name);
}

bool WidgetEventItem::update(const Nodes::EventInfo &info)
{
    const auto fields = [](const WidgetEventItem &item) {
        return std::tie(item.m_time, item.m_id, item.m_text, item.m_user, item.m_oldValue,
                        item.m_newValue, item.m_source, item.m_level, item.m_type,
                        item.m_alarmState, item.m_priority);
    };
    const WidgetEventItem fresh(info, *m_pool);
    const bool isChanged = fields(fresh) != fields(*this);
    *this = fresh;
    return isChanged;
}

} // namespace Widgets
