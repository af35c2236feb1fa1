#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QStyledItemDelegate>

#include <functional>
#include <vector>

class QPoint;

namespace Widgets {

/// Draws a series' line as a sample in a cell of the legend, as wide and as dashed as its curve,
/// and offers other colours. GUI thread.
class WIDGETS_EXPORT ColorDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// What is offered: told apart on a light ground, none of them a colour of alarms.
    static const std::vector<QColor> &palette();
    /// Menu of colours at that place of the desktop, above `near`; tells `chosen` the one that was
    /// taken. Returns at once.
    static void offer(const QPoint &place, const QWidget *near, std::function<void(QColor)> chosen);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

} // namespace Widgets
