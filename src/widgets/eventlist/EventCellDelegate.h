#pragma once

#include "widgets/WidgetsExport.h"

#include <QStyledItemDelegate>

namespace Widgets {

/// Cells of an event list: their text stands apart from their borders.
class WIDGETS_EXPORT EventCellDelegate : public QStyledItemDelegate
{
public:
    /// `elide`: which end of a long text is left out.
    explicit EventCellDelegate(Qt::TextElideMode elide, QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

private:
    const Qt::TextElideMode m_elide;
};

} // namespace Widgets
