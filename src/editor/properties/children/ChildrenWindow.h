#pragma once

#include "editor/properties/PropertyHost.h"

#include "nodes/model/NodeType.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTableView;

namespace Editor {

class ChildrenModel;
class PropertyView;

/// Children of one family as a table, with all properties of the current one beside it: states,
/// columns, axes. Closes when their parent leaves the project.
class ChildrenWindow : public QDialog
{
    Q_OBJECT

public:
    ChildrenWindow(const Nodes::NodeLink &parentNode, Nodes::NodeType::enNodeType family,
                   const PropertyHost &host, const QString &readOnly, QWidget *parent);
    ~ChildrenWindow() override;

    ChildrenModel &children() { return *m_model; }
    QTableView &table() { return *m_table; }

private:
    QWidget *makeButtons(const QString &readOnly);
    void setUpTable(const PropertyHost &host);
    void hideColumns();
    void showCurrent();
    void duplicate();
    QVector<int> rows() const;
    /// Shows the error, else selects the children that came or were moved.
    void conclude(const QString &error, const Nodes::NodeLinks &selected);
    Nodes::NodeLinks selected() const;

    ChildrenModel *m_model;
    QTableView *m_table;
    PropertyView *m_details;
    QLabel *m_error;
};

} // namespace Editor
