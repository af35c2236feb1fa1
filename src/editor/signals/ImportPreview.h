#pragma once

#include "nodes/project/signals/DelimitedText.h"
#include "nodes/project/signals/SheetPlan.h"

#include <QAbstractTableModel>

#include <map>
#include <vector>

namespace Editor {

/// Rows of a table from elsewhere with what would become of each: the first column tells it, the
/// others are those of the text. Cells that change show what is there and what comes, refused ones
/// are crossed, so that neither is told by colour alone. GUI thread.
class ImportPreview : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Shown {
        All,
        Touched,
        Troubled
    }; ///< every row, those that change something, those refused

    explicit ImportPreview(QObject *parent = nullptr);
    ~ImportPreview() override;

    /// `titles` of the columns that the fields go into, "" for those that are not read; rows before
    /// `first` are no rows of data. The table has to outlive what is shown of it.
    void show(const Nodes::TextTable &table, std::size_t first, const Nodes::SheetPlan &plan,
              const std::vector<std::string> &titles);
    void setShown(Shown shown);
    /// Why cells of the row were refused, a line each; empty when none was.
    QString troubleOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

private:
    using Place = std::pair<std::size_t, std::size_t>; ///< row from 1 and column of the text

    void choose();
    QString fateOf(std::size_t row) const;
    QVariant cell(const Place &place, const QString &text, int role) const;

    const Nodes::TextTable *m_table = nullptr;
    std::size_t m_first = 0;
    std::size_t m_width = 0;
    std::vector<Nodes::SheetPlan::Fate> m_fates;
    std::map<Place, QString> m_before;
    std::map<Place, QString> m_refused;
    std::map<std::size_t, QString> m_troubles; ///< by row from 1
    std::vector<std::size_t> m_rows;           ///< shown, from 0
    Shown m_shown = All;
};

} // namespace Editor
