#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/eventlist/EventPool.h"

#include "nodes/events/BasicEvent.h"
#include "nodes/values/Timestamp.h"

#include <QColor>
#include <QVariant>

#include <cstdint>

namespace Nodes {
class EventInfo;
struct ColumnInfo;
} // namespace Nodes

namespace Widgets {

/// One row of an event list. A small value: its texts are in the pool, which outlives it. GUI
/// thread.
class WIDGETS_EXPORT WidgetEventItem
{
public:
    WidgetEventItem(const Nodes::EventInfo &info, EventPool &pool);

    QColor getClrBackground() const { return source().colors.background; }
    QColor getClrText() const { return source().colors.text; }

    /// What the cell of that column shows (Nodes::ColumnInfo::enColumn): one line.
    QVariant data(int column) const;
    /// What the row is sorted by there: numbers where the column tells one, else the text.
    QVariant sortData(const Nodes::ColumnInfo *column) const;

    Nodes::Timestamp time() const { return m_time; }
    unsigned long id() const { return m_id; }
    int level() const { return m_level; }
    int type() const { return m_type; }
    Nodes::AlarmState alarmState() const { return Nodes::AlarmState(m_alarmState); }
    int priority() const { return m_priority; }
    EventTexts::Number text() const { return m_text; }
    EventTexts::Number user() const { return m_user; }
    EventTexts::Number oldValue() const { return m_oldValue; }
    EventTexts::Number newValue() const { return m_newValue; }
    const EventPool::Source &source() const { return m_pool->source(m_source); }

    /// The event again; what was cut off its texts is missing.
    Nodes::BasicEvent event() const;
    /// Whether something was cut off.
    bool isCut() const;
    /// The row stands for the same entry, which has become another: true when something of it did.
    bool update(const Nodes::EventInfo &info);

private:
    QString valueText() const;

    EventPool *m_pool;
    Nodes::Timestamp m_time;
    unsigned long m_id;
    EventTexts::Number m_text;
    EventTexts::Number m_user;
    EventTexts::Number m_oldValue;
    EventTexts::Number m_newValue;
    EventPool::SourceNumber m_source;
    std::uint8_t m_level;
    std::uint8_t m_type;
    std::uint8_t m_alarmState;
    std::uint8_t m_priority;
};

} // namespace Widgets
