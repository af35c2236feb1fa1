#pragma once

#include "editor/review/ReviewFinding.h"

#include "nodes/project/signals/DelimitedText.h"

#include <QAbstractTableModel>

namespace Editor {

/// Findings of a review as rows. GUI thread.
class FindingModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Severity, Screen, Place, What, Advice, ColumnCount };
    static constexpr int SortRole = Qt::UserRole; ///< of Severity: gravest highest

    using QAbstractTableModel::QAbstractTableModel;

    void clear();
    /// In place of what was found on that screen before.
    void take(const Nodes::NodeLink &screen, const ReviewFindings &findings);
    const ReviewFinding &finding(int row) const { return m_rows[row].finding; }
    const Nodes::NodeLink &screen(int row) const { return m_rows[row].link; }
    /// Findings to do something about.
    int count() const;
    /// With a line of titles; with the path of each place.
    Nodes::TextTable table() const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

private:
    struct Row
    {
        Nodes::NodeLink link; ///< of the screen
        QString screen;
        QString place; ///< names as they were when it was found
        QString path;
        ReviewFinding finding;
    };

    static QString nameOf(ReviewFinding::Severity severity);
    QString textAt(const Row &row, int column) const;

    QVector<Row> m_rows;
};

} // namespace Editor
