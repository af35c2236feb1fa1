#pragma once

#include <QTableView>

namespace Editor {

/// A table whose first column stays in sight while the others scroll below it: which signal a row
/// is has to be seen beside its limits. GUI thread.
class SheetView : public QTableView
{
    Q_OBJECT

public:
    using QTableView::edit;
    explicit SheetView(QWidget *parent);
    ~SheetView() override;

    void setModel(QAbstractItemModel *model) override;
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;
    /// The view of the column that stays; a child.
    QTableView &frozen() const { return *m_frozen; }

protected:
    /// Cells of the first column are edited where they are seen.
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override;
    void updateGeometries() override;

private:
    void place();

    QTableView *m_frozen;
};

} // namespace Editor
