#pragma once

#include "editor/compare/ComparedProject.h"

#include "nodes/model/links/NodeLink.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTreeView;

namespace Editor {

class DifferencesModel;
class PicturePair;

/// What differs from one project to another, as a list and in pictures of the windows. GUI thread.
class CompareView : public QWidget
{
    Q_OBJECT

public:
    explicit CompareView(QWidget *parent = nullptr);

    /// Both outlive what is shown of them. What was chosen stays chosen, if it still differs.
    void setProjects(const ComparedProject &before, const ComparedProject &after);
    QTreeView &tree() const { return *m_tree; }
    PicturePair &pictures() const { return *m_pictures; }
    /// Russian, in a few words.
    QString summary() const;

signals:
    /// A node of the second project, by a double click or Enter.
    void nodeActivated(const Nodes::NodeLink &node);

private:
    void build();
    void showChosen(const QModelIndex &current);
    void onActivated(const QModelIndex &index);

    ComparedProject m_after;
    DifferencesModel *m_model;
    QSortFilterProxyModel *m_rows;
    QLabel *m_summary;
    QLineEdit *m_search;
    QTreeView *m_tree;
    PicturePair *m_pictures;
};

} // namespace Editor
