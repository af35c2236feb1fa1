#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/series/SerieColumn.h"

#include <QHeaderView>

namespace Widgets {

/// Header of the legend: a tap or a right click opens a menu in which columns are ticked.
class WIDGETS_EXPORT HeaderView : public QHeaderView
{
    Q_OBJECT

public:
    explicit HeaderView(QWidget *parent = nullptr);

    /// The menu at that place of the desktop, until an entry was chosen or it was left.
    void openMenu(const QPoint &place);

signals:
    void columnToggled(Widgets::SerieColumn column, bool isShown);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
};

} // namespace Widgets
