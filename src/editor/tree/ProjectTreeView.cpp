#include "editor/tree/ProjectTreeView.h"

#include <QKeyEvent>

namespace Editor {

namespace {

QKeySequence keysOf(const QKeyEvent &event)
{
    const int modifiers = int(event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier));
    const int key = event.key() == Qt::Key_Enter ? int(Qt::Key_Return) : event.key();
    return QKeySequence(key | modifiers);
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

} // namespace Editor
