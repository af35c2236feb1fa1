#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QLineEdit;
class QListView;
class QMimeData;
class QSortFilterProxyModel;
class QStandardItemModel;

namespace Nodes {
class NodesCollection;
}

namespace Widgets {

/// The archived signals of a project to be ticked, or dragged onto a trend, found by parts of their
/// names. GUI thread.
class WIDGETS_EXPORT SignalList : public QWidget
{
    Q_OBJECT

public:
    /// Format of what is dragged: ids, separated by blanks.
    static constexpr const char *MimeType = "application/x-station-signals";

    explicit SignalList(QWidget *parent = nullptr);

    /// Signals that the current user may view.
    void setProject(const Nodes::NodesCollection &project);
    void setTicked(const Nodes::NodeLinks &ticked);
    /// Ids that are dragged with that; empty when it is something else.
    static std::vector<unsigned long> idsOf(const QMimeData &data);

signals:
    void toggled(unsigned long signal, bool isTicked);

private:
    void onPressed(const QModelIndex &index);

    QLineEdit *m_search;
    QListView *m_list;
    QStandardItemModel *m_model;
    QSortFilterProxyModel *m_found;
};

} // namespace Widgets
