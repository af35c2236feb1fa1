#pragma once

#include <QWidget>

class QComboBox;
class QLineEdit;
class QListView;
class QModelIndex;
class QSortFilterProxyModel;

namespace Editor {

class SymbolModel;
class Workspace;

/// Palette of symbols: searched by name, shown by group, dragged into a scene; a double click puts
/// one into the middle of what is shown of the active scene. GUI thread.
class SymbolPanel : public QWidget
{
    Q_OBJECT

public:
    SymbolPanel(Workspace &workspace, QWidget *parent);

private:
    void makeList();
    void fillGroups();
    void search();
    void showProject();
    void insert(const QModelIndex &index);

    Workspace &m_workspace;
    SymbolModel *m_model;
    QSortFilterProxyModel *m_found;
    QLineEdit *m_search;
    QComboBox *m_groups;
    QListView *m_list;
};

} // namespace Editor
