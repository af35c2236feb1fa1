#pragma once

#include "editor/compare/ComparedProject.h"

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QToolButton;
class QTreeView;

namespace Editor {

class DifferencesModel;
class PicturePair;
class VersionTaking;

/// What differs from one project to another, as a list and in pictures of the windows. GUI thread.
class CompareView : public QWidget
{
    Q_OBJECT

public:
    explicit CompareView(QWidget *parent = nullptr);

    /// Both outlive what is shown of them. What was chosen stays chosen, if it still differs.
    void setProjects(const ComparedProject &before, const ComparedProject &after);
    /// What the user may ask for: a button and a menu of the rows offer it.
    void setTakeable(bool on);
    /// What is chosen of the first project: nodes as wholes, and properties of others.
    void addChosen(VersionTaking &taking) const;
    QTreeView &tree() const { return *m_tree; }
    PicturePair &pictures() const { return *m_pictures; }
    /// Russian, in a few words.
    QString summary() const;

signals:
    /// A node of the second project, by a double click or Enter.
    void nodeActivated(const Nodes::NodeLink &node);
    /// What is chosen is to become as it is in the first project.
    void takeRequested();

private:
    void build();
    void restoreChosen(const std::pair<unsigned long, unsigned long> &ids, int row);
    void showTaking();
    void showChosen(const QModelIndex &current);
    void onActivated(const QModelIndex &index);

    ComparedProject m_after;
    DifferencesModel *m_model;
    QSortFilterProxyModel *m_rows;
    QLabel *m_summary;
    QLineEdit *m_search;
    QTreeView *m_tree;
    PicturePair *m_pictures;
    QAction *m_take;
    QToolButton *m_takeButton;
};

} // namespace Editor
