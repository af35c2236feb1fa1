#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QModelIndex>
#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

namespace Editor {

class FindingModel;
class ReviewRun;
class SeverityFilter;
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

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makeBar();
    QWidget *makeFoot();
    void makeTable();
    void review(const Nodes::NodeLinks &screens);
    void takeProgress(int done, int total);
    void takeEnd();
    void forget();
    void filter();
    void tell();
    void jump(const QModelIndex &index);
    void jumpByClick(const QModelIndex &index);
    QModelIndexList selectedRows() const;
    void mend();
    void copy() const;
    void save();

    Workspace &m_workspace;
    ReviewRun *m_run;
    FindingModel *m_model;
    SeverityFilter *m_sorted;
    QTableView *m_table;
    QComboBox *m_severity = nullptr;
    QPushButton *m_stop = nullptr;
    QLabel *m_state = nullptr;
    QPushButton *m_active = nullptr;
    QPushButton *m_mend;
    QLabel *m_details; ///< all of the row that is current
};

} // namespace Editor
