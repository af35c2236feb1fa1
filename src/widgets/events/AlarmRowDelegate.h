#pragma once

#include "widgets/eventlist/EventCellDelegate.h"

namespace Widgets {

/// Paints alarm rows: selection is a frame, so that the colour of the state stays to be seen, and
/// rows are numbered as they stand in the table. What does not fit is said in fewer words.
class WIDGETS_EXPORT AlarmRowDelegate : public EventCellDelegate
{
public:
    explicit AlarmRowDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace Widgets
