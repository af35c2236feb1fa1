#pragma once

#include <QStyledItemDelegate>

namespace Widgets {

/// Paints alarm rows: selection is a frame, so that the colour of the state stays to be seen, and
/// rows are numbered as they stand in the table.
class AlarmRowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace Widgets
