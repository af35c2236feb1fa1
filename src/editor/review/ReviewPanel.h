#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QModelIndex;
class QPushButton;
class QSortFilterProxyModel;
class QTableView;

namespace Editor {

class FindingModel;
class ReviewRun;
class Workspace;

/// Review of screens before operators get them: how fast they come up and how well they are read.
/// Each finding leads to its place. GUI thread.
class ReviewPanel : public QWidget
{
    Q_OBJECT

public:
    ReviewPanel(Workspace &workspace, QWidget *parent);

    /// Reviews the screen that is open, or all of the project.
    void reviewActive();
    void reviewAll();

private:
    QWidget *makeBar();
    void makeTable();
    void review(const Nodes::NodeLinks &screens);
    void takeProgress(int done, int total);
    void takeEnd();
    void forget();
    void filter();
    void tell(const QModelIndex &index);
    void jump(const QModelIndex &index);
    void copy() const;

    Workspace &m_workspace;
    ReviewRun *m_run;
    FindingModel *m_model;
    QSortFilterProxyModel *m_sorted;
    QTableView *m_table;
    QComboBox *m_severity = nullptr;
    QPushButton *m_stop = nullptr;
    QLabel *m_state = nullptr;
    QLabel *m_details; ///< all of the row that is current
};

} // namespace Editor
