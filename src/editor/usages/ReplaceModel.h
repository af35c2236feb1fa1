#pragma once

#include "editor/usages/ReplacePlan.h"

#include <QAbstractTableModel>

namespace Editor {

/// The links of a plan, each with a tick; what cannot be replaced says why. GUI thread.
class ReplaceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnWho, ColumnProperty, ColumnFrom, ColumnTo, ColumnNote, ColumnCount };

    explicit ReplaceModel(QObject *parent = nullptr);
    ~ReplaceModel() override;

    void setPlan(ReplacePlan plan);
    const ReplacePlan &plan() const { return m_plan; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    ReplacePlan m_plan;
};

} // namespace Editor
