#include "widgets/events/AlarmRowDelegate.h"

#include "widgets/events/ModelAlarms.h"
#include "widgets/events/filter/AlarmList.h"

#include "nodes/alarms/alarmColumn.h"

#include <QPainter>

#include <array>
#include <utility>

namespace Widgets {

namespace {

bool isFirstUp(const QModelIndex &index)
{
    const auto *info = index.data(ModelAlarms::EventInfoRole).value<const Nodes::EventInfo *>();
    return info && info->GetEvent().isFirstUp;
}

// Texts and margins on both sides of a cell, pixels.
constexpr int margins = 16;
const QString doubtful = QStringLiteral(" (значение недостоверно)");

bool fits(const QStyleOptionViewItem &cell)
{
    return cell.fontMetrics.horizontalAdvance(cell.text) + margins <= cell.rect.width();
}

// The badge tells the priority, too.
void shortenState(QStyleOptionViewItem &cell)
{
    if (fits(cell))
        return;
    static const std::array<std::pair<const char *, const char *>, 4> words{{
        {"Активные неквитированные", "Не квитирована"},
        {"Активные квитированные", "Квитирована"},
        {"Снятые неквитированные", "Снята, ждёт"},
        {"Ожидающие сброса", "Ждёт сброса"},
    }};
    cell.text = cell.text.section(QStringLiteral(", "), 0, 0);
    for (const auto &[whole, brief] : words) {
        if (!fits(cell) && cell.text == QString::fromUtf8(whole))
            cell.text = QString::fromUtf8(brief);
    }
}

// What must not be cut off goes to the front.
void leadWithDoubt(QStyleOptionViewItem &cell)
{
    if (cell.text.endsWith(doubtful) && !fits(cell))
        cell.text = QStringLiteral("Недостоверно: ") + cell.text.chopped(doubtful.size());
}

bool beginsGroup(const QModelIndex &index)
{
    const auto *list = qobject_cast<const AlarmList *>(index.model());
    return list && list->beginsGroup(index.row());
}

} // namespace

AlarmRowDelegate::AlarmRowDelegate(QObject *parent) : EventCellDelegate(Qt::ElideRight, parent) {}

void AlarmRowDelegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    EventCellDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    switch (index.data(ModelAlarms::ColumnKindRole).toInt()) {
    case Nodes::alarmColumn::Number:
        option->text = QString::number(index.row() + 1);
        break;
    case Nodes::alarmColumn::Group:
        shortenState(*option);
        break;
    case Nodes::alarmColumn::Text:
        if (isFirstUp(index))
            option->text = QStringLiteral("► Первая: ") + option->text;
        leadWithDoubt(*option);
        break;
    default:
        break;
    }
}

void AlarmRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    EventCellDelegate::paint(painter, option, index);
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
