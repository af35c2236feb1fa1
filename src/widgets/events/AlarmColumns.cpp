#include "widgets/events/AlarmColumns.h"

#include "nodes/alarms/alarmColumn.h"
#include "nodes/alarms/systemAlarming.h"

#include <QWidget>

namespace Widgets {

using Nodes::alarmColumn;

AlarmColumns::AlarmColumns()
{
    read(nullptr);
}

void AlarmColumns::read(const Nodes::systemAlarming *alarming)
{
    m_columns.clear();
    if (alarming) {
        for (const alarmColumn *column : alarming->GetColumns())
            m_columns.append({QString::fromStdString(column->GetName()), column->GetColumnKind(),
                              column->GetWidth()});
    }
    if (m_columns.isEmpty())
        m_columns = {{QStringLiteral("№"), alarmColumn::Number, 0},
                     {QStringLiteral("Состояние"), alarmColumn::Group, 0},
                     {QStringLiteral("Время"), alarmColumn::Time, 0},
                     {QStringLiteral("Уровень"), alarmColumn::Level, 0},
                     {QStringLiteral("Текст"), alarmColumn::Text, 0}};
    m_isAreaAdded = false;
    if (m_isGrouped)
        addArea();
}

void AlarmColumns::setGrouped(bool isGrouped)
{
    if (isGrouped == m_isGrouped)
        return;
    m_isGrouped = isGrouped;
    if (isGrouped)
        addArea();
    else if (m_isAreaAdded)
        m_columns.remove(columnOf(alarmColumn::Area));
    m_isAreaAdded = m_isAreaAdded && isGrouped;
}

// Before the text, which takes the room that is left.
void AlarmColumns::addArea()
{
    if (columnOf(alarmColumn::Area) >= 0)
        return;
    const int text = columnOf(alarmColumn::Text);
    m_columns.insert(text >= 0 ? text : m_columns.size(),
                     {QStringLiteral("Участок"), alarmColumn::Area, 0});
    m_isAreaAdded = true;
}

int AlarmColumns::columnOf(int kind) const
{
    for (int column = 0; column < m_columns.size(); ++column) {
        if (m_columns[column].kind == kind)
            return column;
    }
    return -1;
}

int AlarmColumns::badgeColumn() const
{
    return qMax(0, columnOf(alarmColumn::Priority));
}

QString AlarmColumns::widestText(int kind)
{
    switch (kind) {
    case alarmColumn::Number:
        return QStringLiteral("00000");
    case alarmColumn::Group:
        return QStringLiteral("Активные неквитированные, приоритет 0");
    case alarmColumn::Time:
    case alarmColumn::Acknowledged:
    case alarmColumn::Returned:
        return QStringLiteral("00.00.0000 00:00:00.000");
    case alarmColumn::Level:
        return QStringLiteral("Предупреждение");
    case alarmColumn::Priority:
        return {}; // the badge
    case alarmColumn::Area:
    case alarmColumn::User:
        return QString(16, QLatin1Char('n'));
    case alarmColumn::Value:
        return QStringLiteral("-000000.000");
    case alarmColumn::Source:
    case alarmColumn::Comment:
        return QString(24, QLatin1Char('n'));
    default:
        return QString(32, QLatin1Char('n'));
    }
}

// The badge tells the state where its words are cut.
int AlarmColumns::leastWidth(int kind)
{
    switch (kind) {
    case alarmColumn::Group:
        return 176;
    case alarmColumn::Level:
        return 148; // "Критический"
    case alarmColumn::Area:
    case alarmColumn::User:
    case alarmColumn::Comment:
        return 110;
    case alarmColumn::Source:
        return 160;
    case alarmColumn::Text:
        return 240;
    default:
        return QWIDGETSIZE_MAX;
    }
}

} // namespace Widgets
