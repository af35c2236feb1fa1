#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/data/SharedRows.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/reports/data/ReportTable.h"
#include "utils/relay/QueueRelay.h"

#include <QAbstractTableModel>

#include <atomic>
#include <memory>

class QThreadPool;

namespace LimeReport {
class ReportEngine;
}

namespace Nodes {
class BasicReportSource;
struct ReportOrder;
} // namespace Nodes

namespace Widgets {

/// Table of a data source of a report: filled by fetch() on a thread of the pool, then shown as it
/// is until it is filled again. Names its columns by the horizontal header. GUI thread.
class WIDGETS_EXPORT ReportModelTable : public QAbstractTableModel,
                                        public LimeReport::SharedRowsModel
{
    Q_OBJECT

public:
    /// The engine that it fills becomes its parent; the pool outlives it.
    ReportModelTable(const Nodes::BasicReportSource *source, LimeReport::ReportEngine *engine,
                     QThreadPool *pool);
    ~ReportModelTable() override;

    /// Reads the data; dataUpdated() follows once, unless it is cancelled or asked again before.
    void fetch(const Nodes::ReportOrder &order);
    /// Ends the reading soon; what was there stays.
    void cancel();
    /// Null before the first data.
    const Nodes::ReportTablePtr &table() const { return m_table; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    LimeReport::SharedRowsPtr sharedRows() const override { return m_rows; }

signals:
    void dataUpdated();

private:
    struct Answer
    {
        unsigned number;
        Nodes::ReportTablePtr table;
    };
    class Task;

    void onAnswers(const std::vector<Answer> &answers);

    const Nodes::NodeLink m_source;
    QThreadPool *m_pool;
    Nodes::ReportTablePtr m_table;
    LimeReport::SharedRowsPtr m_rows;
    unsigned m_number = 0; // of the question asked last
    std::shared_ptr<std::atomic<bool>> m_isCancelled;
    Utils::QueueRelay<Answer> m_answers;
};

} // namespace Widgets
