#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QTableView;

namespace Editor {

class InstanceModel;
class Workspace;

/// Instances of the selected template with what each gives for the parameters. A double click on an
/// instance leads to its element or action. GUI thread.
class InstancePanel : public QWidget
{
    Q_OBJECT

public:
    InstancePanel(Workspace &workspace, QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void makeTable();
    void forget();
    void takeSelection();
    void refresh();
    void addInstance();
    void jump(const QModelIndex &index);
    QStringList paths() const;
    void tellUnknown(const QString &path);

    Workspace &m_workspace;
    InstanceModel *m_model;
    QTableView *m_table;
    QLabel *m_title;
    QPushButton *m_add;
};

} // namespace Editor
