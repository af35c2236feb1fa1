#include "widgets/dialogs/WrapLayout.h"

#include <QSpacerItem>

#include <algorithm>

namespace Widgets {

WrapLayout::WrapLayout() = default;

WrapLayout::~WrapLayout()
{
    qDeleteAll(m_items);
}

void WrapLayout::addItem(QLayoutItem *item)
{
    m_items.append(item);
    invalidate();
}

void WrapLayout::addStretch()
{
    m_stretch = new QSpacerItem(0, 0, QSizePolicy::Expanding);
    addItem(m_stretch);
}

void WrapLayout::setRoom(int width)
{
    if (width == m_room)
        return;
    m_room = width;
    invalidate();
}

QLayoutItem *WrapLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int WrapLayout::heightOf(const Row &row)
{
    int height = 0;
    for (const QLayoutItem *item : row)
        height = std::max(height, item->sizeHint().height());
    return height;
}

int WrapLayout::widthOf(const Row &row) const
{
    int width = -spacing();
    for (const QLayoutItem *item : row)
        width += spacing() + item->sizeHint().width();
    return std::max(0, width);
}

QList<WrapLayout::Row> WrapLayout::rows(int width) const
{
    QList<Row> rows;
    for (QLayoutItem *item : m_items) {
        if (item->isEmpty() && item != m_stretch)
            continue;
        if (rows.isEmpty() || widthOf(rows.last() + Row{item}) > width)
            rows.append(Row());
        rows.last().append(item);
    }
    return rows;
}

int WrapLayout::heightForWidth(int width) const
{
    int height = -spacing();
    for (const Row &row : rows(width))
        height += spacing() + heightOf(row);
    return std::max(0, height);
}

QSize WrapLayout::sizeHint() const
{
    const QList<Row> one = rows(QLAYOUTSIZE_MAX);
    return one.isEmpty() ? QSize() : QSize(widthOf(one.first()), heightOf(one.first()));
}

QSize WrapLayout::minimumSize() const
{
    int widest = 0;
    for (const QLayoutItem *item : m_items)
        widest = std::max(widest, item->isEmpty() ? 0 : item->sizeHint().width());
    const int width = std::max(widest, std::min(sizeHint().width(), m_room));
    return {width, heightForWidth(width)};
}

void WrapLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    int top = rect.top();
    for (const Row &row : rows(rect.width())) {
        placeRow(row, QRect(rect.left(), top, rect.width(), heightOf(row)));
        top += heightOf(row) + spacing();
    }
}

void WrapLayout::placeRow(const Row &row, const QRect &rect) const
{
    int left = rect.left();
    for (QLayoutItem *item : row) {
        const int rest = item == m_stretch ? std::max(0, rect.width() - widthOf(row)) : 0;
        const int width = item->sizeHint().width() + rest;
        item->setGeometry(QRect(left, rect.top(), width, rect.height()));
        left += width + spacing();
    }
}

} // namespace Widgets
