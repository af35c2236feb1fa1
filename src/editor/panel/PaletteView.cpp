#include "editor/panel/PaletteView.h"

#include <QAbstractItemView>
#include <QDrag>
#include <QIcon>
#include <QMimeData>
#include <QPainter>

namespace Editor {

namespace {

constexpr int iconsAtMost = 4;
constexpr QPoint fromPointer(14, 14); // its corner is below and right of the arrow

QModelIndexList draggable(const QAbstractItemView &view)
{
    QModelIndexList chosen;
    for (const QModelIndex &index : view.selectionModel()->selectedIndexes()) {
        if (index.flags() & Qt::ItemIsDragEnabled)
            chosen.append(index);
    }
    return chosen;
}

} // namespace

QPixmap PaletteDrag::picture(const QAbstractItemView &view)
{
    const QModelIndexList chosen = draggable(view).mid(0, iconsAtMost);
    const QSize icon = view.iconSize();
    const double ratio = view.devicePixelRatioF();
    QPixmap picture(QSize(icon.width() * chosen.size(), icon.height()) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QRect place(QPoint(), icon);
    for (const QModelIndex &index : chosen) {
        const QVariant shown = index.data(Qt::DecorationRole);
        const QIcon known =
            shown.type() == QVariant::Pixmap ? QIcon(shown.value<QPixmap>()) : shown.value<QIcon>();
        known.paint(&painter, place);
        place.translate(icon.width(), 0);
    }
    return picture;
}

void PaletteDrag::start(QAbstractItemView &view, Qt::DropActions actions)
{
    QMimeData *data = view.model()->mimeData(draggable(view));
    if (!data)
        return;
    auto *drag = new QDrag(&view); // Qt deletes it, with the data
    drag->setMimeData(data);
    drag->setPixmap(picture(view));
    drag->setHotSpot(-fromPointer);
    drag->exec(actions, Qt::CopyAction);
}

} // namespace Editor
