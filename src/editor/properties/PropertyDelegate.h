#pragma once

#include "editor/properties/values/ValueEditor.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QStyledItemDelegate>

namespace Editor {

/// Paints and edits the values of property tables. An editor whose value was refused stays open and
/// says why; one whose row goes away goes with it. GUI thread.
class PropertyDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// What the editor of a cell has to know; null context.descriptor: a line of text.
    using Contexts = std::function<ValueContext(const QModelIndex &)>;

    PropertyDelegate(Contexts contexts, QObject *parent);
    ~PropertyDelegate() override;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void setEditorData(QWidget *editor, const QModelIndex &index) const override;
    void setModelData(QWidget *editor, QAbstractItemModel *model,
                      const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Takes over what is being typed, before the table shows something else. False when it was
    /// refused.
    bool commitOpen();
    /// Null when none is open.
    ValueEditor *openEditor() const { return m_editor; }

signals:
    /// A number is about to be spun; its steps come with PropertyModel::StepRole.
    void interactionBegun() const;
    void interactionEnded() const;
    void interactionCancelled() const;
    /// The list of the cell's row is to be edited in its window.
    void windowRequested(const QModelIndex &index) const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool commit(ValueEditor &editor) const;
    void step(ValueEditor &editor) const;
    void close(ValueEditor &editor, EndEditHint hint);
    bool pressed(ValueEditor &editor, int key, bool isShift);

    Contexts m_contexts;
    mutable QPointer<ValueEditor> m_editor;
    mutable QPersistentModelIndex m_index;
    mutable bool m_isStepping = false;
};

} // namespace Editor
