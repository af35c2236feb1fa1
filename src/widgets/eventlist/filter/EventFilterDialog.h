#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include "nodes/model/NodesArray.h"

#include <QTimer>

class QLabel;
class QSortFilterProxyModel;
class QTreeView;
class QVBoxLayout;

namespace Nodes {
class widgetEventList;
}

namespace Widgets {

class FilterModel;

/// Asks whose events are shown: a tree of the project's nodes to tick. GUI thread.
class WIDGETS_EXPORT EventFilterDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "eventFilter";

    explicit EventFilterDialog(Nodes::widgetEventList *node, QWidget *parent = nullptr);

    /// What is ticked; nothing: the events of all.
    Nodes::NodesArray sources() const;

private:
    void buildKeys(QVBoxLayout *column);
    void showCount();
    void find(const QString &text);

    FilterModel *m_model;
    QSortFilterProxyModel *m_found;
    QTreeView *m_tree;
    QLabel *m_count;
    QTimer m_counting; // once for all that a tick changes
};

} // namespace Widgets
