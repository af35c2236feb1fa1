#pragma once

#include "nodes/project/NodeDifference.h"

#include <QAbstractItemModel>

#include <vector>

namespace Editor {

/// Differences of two projects: a row for each node, below it what it differs in. GUI thread.
class DifferencesModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum enColumn { WhatColumn, BeforeColumn, AfterColumn, ColumnCount };

    using QAbstractItemModel::QAbstractItemModel;

    void setDifferences(std::vector<Nodes::NodeDifference> differences);
    /// Of the node of that row or of the one above it; null for no row.
    const Nodes::NodeDifference *difference(const QModelIndex &index) const;
    /// Which of the node's differing properties the row is of; null for that of the node.
    const Nodes::PropertyDifference *property(const QModelIndex &index) const;
    /// Sign and word for what became of the node: told apart without colour.
    static QString wordOf(const Nodes::NodeDifference &difference);

    QModelIndex index(int row, int column, const QModelIndex &parent = {}) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    static QString nodeCell(const Nodes::NodeDifference &difference, int column);
    static QString propertyCell(const Nodes::PropertyDifference &property, int column);

    std::vector<Nodes::NodeDifference> m_differences;
};

} // namespace Editor
