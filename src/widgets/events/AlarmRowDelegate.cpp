#include "widgets/events/AlarmRowDelegate.h"

#include "widgets/events/ModelAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/alarmColumn.h"

#include <QPainter>

namespace Widgets {

namespace {

bool isFirstUp(const QModelIndex &index)
{
    const auto *info = index.data(ModelAlarms::EventInfoRole).value<const Nodes::EventInfo *>();
    return info && info->GetEvent().isFirstUp;
}

bool beginsGroup(const QModelIndex &index)
{
    const auto *list = qobject_cast<const AlarmList *>(index.model());
    return list && list->beginsGroup(index.row());
}

} // namespace

void AlarmRowDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    if (index.data(ModelAlarms::ColumnKindRole) == Nodes::alarmColumn::Number)
        option->text = QString::number(index.row() + 1);
    else if (index.data(ModelAlarms::ColumnKindRole) == Nodes::alarmColumn::Text &&
             isFirstUp(index))
        option->text = QStringLiteral("► Первая: ") + option->text;
}

void AlarmRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (beginsGroup(index))
        painter->fillRect(option.rect.left(), option.rect.top(), option.rect.width(), 4,
                          QColor(0xf0, 0xf2, 0xf4));
    if (!option.state.testFlag(QStyle::State_Selected))
        return;
    constexpr int thickness = 3;
    const QRect &r = option.rect;
    const bool isFirst = index.column() == 0;
    const bool isLast = index.column() == index.model()->columnCount() - 1;
    const auto frame = [&](const QRect &area, const QColor &color) {
        painter->fillRect(area.left(), area.top(), area.width(), thickness, color);
        painter->fillRect(area.left(), area.bottom() + 1 - thickness, area.width(), thickness,
                          color);
        if (isFirst)
            painter->fillRect(area.left(), area.top(), thickness, area.height(), color);
        if (isLast)
            painter->fillRect(area.right() + 1 - thickness, area.top(), thickness, area.height(),
                              color);
    };
    // White outside, dark inside: one of them is seen on every ground.
    frame(r.adjusted(isFirst ? thickness : 0, thickness, isLast ? -thickness : 0, -thickness),
          QColor(0x1c, 0x20, 0x24));
    frame(r, Qt::white);
}

} // namespace Widgets
