#include "editor/properties/PropertyDelegate.h"

#include "editor/properties/PropertyModel.h"
#include "editor/properties/values/LinksEditor.h"
#include "editor/properties/values/ValueEditors.h"

#include <QApplication>
#include <QKeyEvent>

#include <utility>

namespace Editor {

namespace {

constexpr int rowHeight = 24;

ValueEditor *editorOf(QObject *object)
{
    while (object) {
        if (auto *editor = qobject_cast<ValueEditor *>(object))
            return editor;
        object = object->parent();
    }
    return nullptr;
}

bool hasFocus(const QWidget &editor)
{
    const QWidget *focus = QApplication::focusWidget();
    while (focus && focus != &editor)
        focus = focus->parentWidget();
    return focus != nullptr;
}

} // namespace

PropertyDelegate::PropertyDelegate(Contexts contexts, QObject *parent)
    : QStyledItemDelegate(parent), m_contexts(std::move(contexts))
{
}

PropertyDelegate::~PropertyDelegate() = default;

QWidget *PropertyDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &,
                                        const QModelIndex &index) const
{
    ValueEditor *editor = makeValueEditor(m_contexts(index), parent);
    auto *self = const_cast<PropertyDelegate *>(this);
    m_editor = editor;
    m_index = index;
    m_isStepping = false;
    if (editor->focusProxy())
        editor->focusProxy()->installEventFilter(self);
    connect(editor, &ValueEditor::stepped, this, [this, editor] { step(*editor); });
    connect(editor, &ValueEditor::finished, this, [self, editor] {
        if (self->commit(*editor))
            self->close(*editor, NoHint);
    });
    if (auto *links = qobject_cast<LinksEditor *>(editor)) {
        const QPersistentModelIndex row(index);
        connect(links, &LinksEditor::windowRequested, this,
                [this, row] { emit windowRequested(row); });
    }
    return editor;
}

// What has been typed is not lost to a change from elsewhere.
void PropertyDelegate::setEditorData(QWidget *widget, const QModelIndex &index) const
{
    auto *editor = qobject_cast<ValueEditor *>(widget);
    if (editor && !editor->isTouched())
        editor->showValue(index.data(Qt::EditRole).toString(),
                          index.data(PropertyModel::MixedRole).toBool());
}

void PropertyDelegate::setModelData(QWidget *widget, QAbstractItemModel *,
                                    const QModelIndex &) const
{
    if (auto *editor = qobject_cast<ValueEditor *>(widget))
        (void)commit(*editor);
}

void PropertyDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                            const QModelIndex &) const
{
    editor->setGeometry(option.rect);
}

QSize PropertyDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize hint = QStyledItemDelegate::sizeHint(option, index);
    return {hint.width(), std::max(hint.height(), rowHeight)};
}

bool PropertyDelegate::commit(ValueEditor &editor) const
{
    if (!editor.isTouched())
        return true;
    if (!m_index.isValid())
        return false;
    auto *model = const_cast<QAbstractItemModel *>(m_index.model());
    const int role = m_isStepping ? int(PropertyModel::StepRole) : int(Qt::EditRole);
    const QPointer<ValueEditor> guard(&editor);
    const bool isTaken = model->setData(m_index, editor.text(), role);
    if (!guard)
        return isTaken;
    editor.setTouched(!isTaken);
    editor.showError(isTaken ? QString() : m_index.data(PropertyModel::ErrorRole).toString());
    return isTaken;
}

void PropertyDelegate::step(ValueEditor &editor) const
{
    if (!std::exchange(m_isStepping, true))
        emit interactionBegun();
    (void)commit(editor);
}

void PropertyDelegate::close(ValueEditor &editor, EndEditHint hint)
{
    if (std::exchange(m_isStepping, false))
        emit interactionEnded();
    editor.setTouched(false);
    m_editor = nullptr;
    emit closeEditor(&editor, hint);
}

bool PropertyDelegate::commitOpen()
{
    const QPointer<ValueEditor> editor = m_editor;
    if (!editor || !commit(*editor))
        return !editor;
    if (editor)
        close(*editor, NoHint);
    return true;
}

bool PropertyDelegate::pressed(ValueEditor &editor, int key, bool isShift)
{
    switch (key) {
    case Qt::Key_Escape:
        if (std::exchange(m_isStepping, false))
            emit interactionCancelled();
        close(editor, RevertModelCache);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (commit(editor))
            close(editor, NoHint);
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        if (commit(editor))
            close(editor, key == Qt::Key_Backtab || isShift ? EditPreviousItem : EditNextItem);
        return true;
    default:
        return false;
    }
}

bool PropertyDelegate::eventFilter(QObject *watched, QEvent *event)
{
    ValueEditor *editor = editorOf(watched);
    if (!editor)
        return false;
    if (event->type() == QEvent::ShortcutOverride) {
        // The keys of the editor are not the window's: Escape would clear the selection.
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter)
            event->accept();
        return false;
    }
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<const QKeyEvent *>(event);
        return pressed(*editor, key->key(), key->modifiers() & Qt::ShiftModifier);
    }
    if (event->type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason reason = static_cast<const QFocusEvent *>(event)->reason();
    const bool isAway = reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
    if (isAway && !hasFocus(*editor) && commit(*editor))
        close(*editor, NoHint);
    return false;
}

} // namespace Editor
