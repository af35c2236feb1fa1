#pragma once

#include "editor/properties/PropertyHost.h"
#include "editor/properties/values/ValueEditor.h"

#include <QHash>
#include <QTreeView>

namespace Editor {

class PropertyDelegate;
class PropertyFilter;
class PropertyModel;

/// The table of properties of a selection. Enter edits, arrows move, Tab takes the value and goes
/// on, Escape leaves it, Ctrl+Backspace gives back the value of a fresh node. What is open, current
/// and scrolled to stays from selection to selection. GUI thread.
class PropertyView : public QTreeView
{
    Q_OBJECT

public:
    explicit PropertyView(const PropertyHost &host, QWidget *parent = nullptr);
    ~PropertyView() override;

    /// What is being typed goes to the nodes shown until now.
    void setNodes(const Nodes::NodeLinks &nodes);
    void setReadOnly(const QString &reason);
    void search(const QString &text);
    PropertyModel &properties() { return *m_model; }
    const PropertyDelegate &delegate() const { return *m_delegate; }
    /// Edits the row as Enter does: in its place, or in a window. `index` is of the view's model.
    void editRow(const QModelIndex &index);
    /// First column of the row with that key, in the view's model.
    QModelIndex find(const QString &key) const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;

private:
    void connectModel();
    /// Pixels that names and values have together.
    int shared() const;
    void press(const QModelIndex &index);
    void openWindow(const QModelIndex &index);
    void remember();
    void restore();
    void fitNames();
    void noteOpen(const QModelIndex &index, bool isOpen);
    bool resetCurrent();
    ValueContext contextOf(const QModelIndex &index) const;

    PropertyHost m_host;
    PropertyModel *m_model;
    PropertyFilter *m_filter;
    PropertyDelegate *m_delegate;
    QHash<QString, bool> m_isOpen; ///< by key, of those that the user has opened or closed
    QString m_current;
    int m_scroll = 0;
    double m_nameShare = 0; ///< of the width, as the user has parted it; 0: as the names want it
    bool m_isFitting = false;
    bool m_isRestoring = false;
};

} // namespace Editor
