#include "widgets/charts/legend/HeaderView.h"

#include "widgets/charts/legend/LegendModel.h"
#include "widgets/charts/menus/TouchMenu.h"

#include <QContextMenuEvent>

namespace Widgets {

HeaderView::HeaderView(QWidget *parent) : QHeaderView(Qt::Horizontal, parent)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    setMinimumSectionSize(24);
    setTextElideMode(Qt::ElideRight);
    connect(this, &QHeaderView::sectionClicked, this, [this](int section) {
        openMenu(mapToGlobal(QPoint(sectionViewportPosition(section), height())));
    });
}

void HeaderView::openMenu(const QPoint &place)
{
    auto *menu = new TouchMenu(this);
    for (int number = 0; number < int(SerieColumn::Count); ++number) {
        const auto column = SerieColumn(number);
        QAction *action = menu->addAction(LegendModel::title(column));
        action->setCheckable(true);
        action->setChecked(!isSectionHidden(number));
        // Without its name a row says nothing.
        action->setEnabled(column != SerieColumn::Name);
        connect(action, &QAction::toggled, this,
                [this, column](bool isShown) { emit columnToggled(column, isShown); });
    }
    menu->openAt(place);
}

void HeaderView::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->globalPos());
    event->accept();
}

} // namespace Widgets
