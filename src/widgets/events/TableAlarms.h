#pragma once

#include "widgets/WidgetsExport.h"

#include <QTableView>

namespace Utils {
class SortingModel;
}

namespace Widgets {

class ModelAlarms;

/// Table of the alarms: what waits for acknowledgement first, then the newest. A touch of a header
/// sorts by that column. Rows are high enough for fingers.
class WIDGETS_EXPORT TableAlarms : public QTableView
{
    Q_OBJECT

public:
    explicit TableAlarms(QWidget *parent = nullptr);

    /// Shows the model through the proxy; both outlive the table.
    void setAlarms(ModelAlarms &model, Utils::SortingModel &sorting);
    /// Selected row in the source model; invalid without one.
    QModelIndex selectedRow() const;
    /// Width at which no column is cut off.
    int headerWidth() const;

signals:
    /// The first column of a row was double-clicked; index of the source model.
    void rowDoubleClicked(const QModelIndex &source);

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    void sortBy(int column, Qt::SortOrder order);
    void onHeaderClicked(int column);
    void takeColumns();

    ModelAlarms *m_model = nullptr;
    Utils::SortingModel *m_sorting = nullptr;
};

} // namespace Widgets
