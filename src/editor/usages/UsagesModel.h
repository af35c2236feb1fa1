#pragma once

#include "editor/usages/Usage.h"

#include <QAbstractTableModel>

namespace Editor {

/// A list of links: who has it, by which property, where that node stands and where the link leads.
/// A snapshot; nodes that went since are shown as such. GUI thread.
class UsagesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnWho, ColumnProperty, ColumnKind, ColumnPath, ColumnTarget, ColumnCount };

    explicit UsagesModel(QObject *parent = nullptr);
    ~UsagesModel() override;

    void setUsages(Usages usages);
    const Usages &usages() const { return m_usages; }
    /// Null for an index that is none of this model's.
    const Usage *usageAt(const QModelIndex &index) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    Usages m_usages;
};

/// "Сигнал" and the like; the property's number for a node that is gone.
QString propertyName(const Nodes::LinkUse &use);

} // namespace Editor
