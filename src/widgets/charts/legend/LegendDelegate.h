#pragma once

#include <QStyledItemDelegate>

namespace Widgets {

/// Cells of the legend with a text: digits equally wide, long texts cut with dots, and a value
/// that is not good with the mark of its quality.
class LegendDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static constexpr int Margin = 6; ///< pixels at either side of a text

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Tells the whole text where it is cut.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
                   const QModelIndex &index) override;
};

} // namespace Widgets
