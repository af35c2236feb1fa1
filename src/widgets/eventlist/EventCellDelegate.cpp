#include "widgets/eventlist/EventCellDelegate.h"

#include "widgets/eventlist/EventListLook.h"

#include <QApplication>

namespace Widgets {

EventCellDelegate::EventCellDelegate(Qt::TextElideMode elide, QObject *parent)
    : QStyledItemDelegate(parent), m_elide(elide)
{
}

// The ground of the whole cell, then its content within the margins.
void EventCellDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.textElideMode = m_elide;
    const QStyle *style = cell.widget ? cell.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    cell.rect.setLeft(cell.rect.left() + EventListLook::Gap - 2); // the style adds its own
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
}

} // namespace Widgets
