#include "widgets/charts/legend/ColorDelegate.h"

#include "widgets/charts/menus/TouchMenu.h"
#include "widgets/charts/series/SerieColumn.h"

#include <QApplication>
#include <QGridLayout>
#include <QPainter>
#include <QPen>
#include <QToolButton>
#include <QWidgetAction>

namespace Widgets {

namespace {

constexpr int swatchSize = 36; // pixels, for fingers
constexpr int swatchesInRow = 4;

QIcon swatch(const QColor &color)
{
    QPixmap picture(swatchSize - 8, swatchSize - 8);
    picture.fill(color);
    return QIcon(picture);
}

QToolButton *makeButton(const QColor &color, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setFixedSize(swatchSize, swatchSize);
    button->setIcon(swatch(color));
    button->setIconSize({swatchSize - 8, swatchSize - 8});
    button->setAutoRaise(true);
    button->setObjectName(color.name());
    return button;
}

} // namespace

const std::vector<QColor> &ColorDelegate::palette()
{
    static const std::vector<QColor> colors{
        {0x1f, 0x5f, 0xa8}, {0x00, 0x7a, 0x87}, {0x2f, 0x7d, 0x32}, {0x6b, 0x8e, 0x23},
        {0x8a, 0x5a, 0x1e}, {0xb0, 0x6a, 0x00}, {0x7b, 0x3f, 0x9e}, {0xa8, 0x3f, 0x7c},
        {0x4a, 0x4f, 0xb5}, {0x33, 0x66, 0x66}, {0x5d, 0x4a, 0x66}, {0x30, 0x34, 0x38}};
    return colors;
}

void ColorDelegate::offer(const QPoint &place, const QWidget *near,
                          std::function<void(QColor)> chosen)
{
    auto *menu = new TouchMenu(near);
    auto *grid = new QWidget(menu);
    auto *layout = new QGridLayout(grid);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    int number = 0;
    for (const QColor &color : palette()) {
        QToolButton *button = makeButton(color, grid);
        connect(button, &QToolButton::clicked, menu, [menu, chosen, color] {
            menu->close();
            chosen(color);
        });
        layout->addWidget(button, number / swatchesInRow, number % swatchesInRow);
        ++number;
    }
    auto *action = new QWidgetAction(menu);
    action->setDefaultWidget(grid);
    menu->addAction(action);
    menu->openAt(place);
}

void ColorDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    QStyleOptionViewItem base = option;
    initStyleOption(&base, index);
    base.text.clear();
    base.icon = QIcon();
    base.state &= ~QStyle::State_HasFocus;
    const QWidget *view = option.widget;
    QStyle *style = view ? view->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &base, painter, view);

    QPen pen = index.data(SerieLineRole).value<QPen>();
    pen.setWidthF(qBound(2.0, pen.widthF(), 5.0));
    pen.setCapStyle(Qt::FlatCap);
    const QRect place = option.rect.adjusted(5, 5, -5, -5);
    painter->save();
    // White around it: dark colours are seen on the ground of a selected row.
    painter->fillRect(place, Qt::white);
    painter->setPen(pen);
    painter->drawLine(place.left() + 2, place.center().y() + 1, place.right() - 1,
                      place.center().y() + 1);
    painter->restore();
}

QSize ColorDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const
{
    return {44, option.fontMetrics.height()};
}

} // namespace Widgets
