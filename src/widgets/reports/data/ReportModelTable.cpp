#include "widgets/reports/data/ReportModelTable.h"

#include "widgets/reports/data/ReportTableRows.h"

#include "nodes/reports/data/BasicReportSource.h"

#include <QRunnable>
#include <QThreadPool>

#include <lrreportengine.h>

namespace Widgets {

class ReportModelTable::Task : public QRunnable
{
public:
    using Inlet = Utils::QueueRelay<Answer>::Inlet;

    Task(std::unique_ptr<Nodes::ReportQuestion> question, unsigned number,
         std::shared_ptr<const std::atomic<bool>> isCancelled, Inlet inlet)
        : m_question(std::move(question)),
          m_number(number),
          m_isCancelled(std::move(isCancelled)),
          m_inlet(std::move(inlet))
    {
    }

    void run() override
    {
        if (!*m_isCancelled)
            m_inlet({m_number, m_question->Answer(*m_isCancelled)});
    }

private:
    const std::unique_ptr<Nodes::ReportQuestion> m_question;
    const unsigned m_number;
    const std::shared_ptr<const std::atomic<bool>> m_isCancelled;
    const Inlet m_inlet;
};

ReportModelTable::ReportModelTable(const Nodes::BasicReportSource *source,
                                   LimeReport::ReportEngine *engine, QThreadPool *pool)
    : QAbstractTableModel(engine),
      m_source(source),
      m_pool(pool),
      m_table(std::make_shared<Nodes::ReportTable>()),
      m_rows(std::make_shared<ReportTableRows>(m_table)),
      m_answers([this](const std::vector<Answer> &answers) { onAnswers(answers); })
{
}

ReportModelTable::~ReportModelTable()
{
    cancel();
}

void ReportModelTable::fetch(const Nodes::ReportOrder &order)
{
    cancel();
    m_isCancelled = std::make_shared<std::atomic<bool>>(false);
    const auto *source = dynamic_cast<const Nodes::BasicReportSource *>(m_source.GetNode());
    if (!source) {
        auto gone = std::make_shared<Nodes::ReportTable>();
        gone->Note(Nodes::Result(Nodes::Result::NotFound, "the data source has been deleted"));
        return m_answers.inlet()({m_number, gone});
    }
    m_pool->start(new Task(source->Ask(order), m_number, m_isCancelled, m_answers.inlet()));
}

void ReportModelTable::cancel()
{
    ++m_number;
    if (m_isCancelled)
        *m_isCancelled = true;
}

void ReportModelTable::onAnswers(const std::vector<Answer> &answers)
{
    for (const Answer &answer : answers) {
        if (answer.number != m_number)
            continue;
        beginResetModel();
        m_table = answer.table;
        m_rows = std::make_shared<ReportTableRows>(m_table);
        endResetModel();
        emit dataUpdated();
        return;
    }
}

int ReportModelTable::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows->rowCount();
}

int ReportModelTable::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_table->columns.size());
}

QVariant ReportModelTable::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return m_rows->value(index.row(), index.column());
}

QVariant ReportModelTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isColumn = orientation == Qt::Horizontal && section >= 0 &&
                          section < columnCount() && role == Qt::DisplayRole;
    return isColumn ? QString::fromStdString(m_table->columns[std::size_t(section)].name)
                    : QAbstractTableModel::headerData(section, orientation, role);
}

} // namespace Widgets
