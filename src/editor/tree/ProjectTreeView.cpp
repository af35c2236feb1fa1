#include "editor/tree/ProjectTreeView.h"

#include <QDrag>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>

#include <algorithm>

namespace Editor {

namespace {

constexpr int iconSide = 16;

QKeySequence keysOf(const QKeyEvent &event)
{
    const int modifiers = int(event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier));
    const int key = event.key() == Qt::Key_Enter ? int(Qt::Key_Return) : event.key();
    return QKeySequence(key | modifiers);
}

/// Picture and name of the first node, and how many more come: the rows as they are would cover
/// what they are dropped onto.
QPixmap dragPicture(const QWidget &view, const QModelIndexList &indexes)
{
    QString text = indexes.first().data().toString();
    if (indexes.size() > 1)
        text += QStringLiteral(" и ещё %1").arg(indexes.size() - 1);
    const QFontMetrics metrics = view.fontMetrics();
    text = metrics.elidedText(text, Qt::ElideMiddle, metrics.averageCharWidth() * 30);
    const int height = std::max(metrics.height(), iconSide) + 4;
    const QSize size(metrics.horizontalAdvance(text) + iconSide + 14, height);
    QPixmap picture(size * view.devicePixelRatioF());
    picture.setDevicePixelRatio(view.devicePixelRatioF());
    picture.fill(view.palette().color(QPalette::ToolTipBase));
    QPainter painter(&picture);
    painter.setFont(view.font());
    painter.setPen(view.palette().color(QPalette::ToolTipText));
    painter.drawRect(QRect(QPoint(), size - QSize(1, 1)));
    const auto icon = qvariant_cast<QIcon>(indexes.first().data(Qt::DecorationRole));
    icon.paint(&painter, 4, (height - iconSide) / 2, iconSide, iconSide);
    painter.drawText(QRect(iconSide + 8, 0, size.width(), height), Qt::AlignVCenter, text);
    return picture;
}

} // namespace

ProjectTreeView::ProjectTreeView(QWidget *parent) : QTreeView(parent)
{
    setDragDropMode(DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setDropIndicatorShown(true);
    setAutoExpandDelay(700);
    setEditTriggers(EditKeyPressed);
    setContextMenuPolicy(Qt::CustomContextMenu);
}

ProjectTreeView::~ProjectTreeView() = default;

bool ProjectTreeView::event(QEvent *event)
{
    // Accepted, it comes as a key press instead of triggering what a menu has for it.
    if (event->type() == QEvent::ShortcutOverride && state() != EditingState) {
        bool isTaken = false;
        emit keyAsked(keysOf(*static_cast<QKeyEvent *>(event)), false, isTaken);
        if (isTaken) {
            event->accept();
            return true;
        }
    }
    return QTreeView::event(event);
}

void ProjectTreeView::keyPressEvent(QKeyEvent *event)
{
    bool isTaken = false;
    emit keyAsked(keysOf(*event), true, isTaken);
    if (!isTaken)
        QTreeView::keyPressEvent(event);
}

void ProjectTreeView::startDrag(Qt::DropActions actions)
{
    QModelIndexList indexes;
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex &index : rows) {
        if (model()->flags(index) & Qt::ItemIsDragEnabled)
            indexes.append(index);
    }
    QMimeData *data = indexes.isEmpty() ? nullptr : model()->mimeData(indexes);
    if (!data)
        return;
    auto *drag = new QDrag(this); // deletes itself
    drag->setMimeData(data);
    drag->setPixmap(dragPicture(*this, indexes));
    drag->setHotSpot(QPoint(-12, -12)); // beside the pointer
    // What is moved within the tree has been moved by its drop: nothing is left to remove here.
    drag->exec(actions, defaultDropAction());
}

} // namespace Editor
