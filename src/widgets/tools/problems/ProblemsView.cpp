#include "widgets/tools/problems/ProblemsView.h"

#include "widgets/dialogs/DialogLook.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

namespace Widgets {

namespace {

constexpr int severityWidth = 150;
constexpr int placeWidth = 360;

} // namespace

ProblemsView::ProblemsView(QWidget *parent)
    : QWidget(parent),
      m_model(new ProblemsModel(this)),
      m_rows(new QSortFilterProxyModel(this)),
      m_table(new QTableView(this)),
      m_search(new QLineEdit(this)),
      m_summary(new QLabel(this)),
      m_again(new QPushButton(QStringLiteral("Проверить снова"), this))
{
    m_rows->setSourceModel(m_model);
    m_rows->setSortRole(ProblemsModel::SortRole);
    m_rows->setSortLocaleAware(true);
    m_rows->setFilterRole(ProblemsModel::FilterRole);
    m_rows->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_search->setPlaceholderText(QStringLiteral("Найти"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumHeight(TouchSize);
    for (QWidget *widget : {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_summary)})
        MakeLegible(*widget);
    m_again->setAutoDefault(false);
    MakeTouchable(*m_again);
    buildTable();
    auto *layout = new QVBoxLayout(this);
    auto *top = new QHBoxLayout;
    layout->setContentsMargins(0, 0, 0, 0);
    top->addWidget(m_summary, 1);
    top->addWidget(m_search, 1);
    top->addWidget(m_again);
    layout->addLayout(top);
    layout->addWidget(m_table, 1);
    connect(m_search, &QLineEdit::textChanged, m_rows,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_again, &QPushButton::clicked, this, [this] { check(m_core); });
    connect(&m_check, &ProblemsCheck::found, m_model, &ProblemsModel::append);
    connect(&m_check, &ProblemsCheck::progressed, this, &ProblemsView::tellProgress);
}

void ProblemsView::buildTable()
{
    m_table->setModel(m_rows);
    MakeLegible(*m_table);
    MakeLegible(*m_table->horizontalHeader());
    m_table->setSelectionBehavior(QTableView::SelectRows);
    m_table->setSelectionMode(QTableView::SingleSelection);
    m_table->setEditTriggers(QTableView::NoEditTriggers);
    m_table->setWordWrap(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(TouchSize);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->setColumnWidth(ProblemsModel::SeverityColumn, severityWidth);
    m_table->setColumnWidth(ProblemsModel::PlaceColumn, placeWidth);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(ProblemsModel::SeverityColumn, Qt::AscendingOrder);
    connect(m_table, &QTableView::activated, this, &ProblemsView::onActivated);
}

void ProblemsView::check(const Nodes::systemCore *core)
{
    m_core = core;
    m_model->clear();
    m_again->setEnabled(false);
    m_check.start(core);
}

void ProblemsView::tellProgress(int done, int count)
{
    const bool isDone = done >= count;
    const int errors = m_model->count(Problem::Error);
    const int remarks = m_model->count(Problem::Remark);
    const QString found =
        errors + remarks == 0
            ? QStringLiteral("Проблем не найдено")
            : QStringLiteral("Ошибок: %1, замечаний: %2").arg(errors).arg(remarks);
    m_summary->setText(isDone ? found
                              : QStringLiteral("Проверено узлов: %1 из %2. ").arg(done).arg(count) +
                                    found);
    m_again->setEnabled(isDone);
    if (isDone)
        m_table->resizeRowsToContents();
}

QString ProblemsView::summary() const
{
    return m_summary->text();
}

void ProblemsView::onActivated(const QModelIndex &index)
{
    const Nodes::NodeLink node = m_model->problem(m_rows->mapToSource(index).row()).node;
    if (node.GetNode())
        emit nodeActivated(node);
}

} // namespace Widgets
