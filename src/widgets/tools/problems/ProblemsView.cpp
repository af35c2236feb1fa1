#include "widgets/tools/problems/ProblemsView.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/tools/problems/ProblemsFilter.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include <initializer_list>

namespace Widgets {

namespace {

constexpr int severityWidth[] = {150, 120}; // by look
constexpr int placeWidth[] = {360, 280};
constexpr int fittedRows = 300; // each is laid out for its height: more would stop the window

} // namespace

ProblemsView::ProblemsView(QWidget *parent, enLook look)
    : QWidget(parent),
      m_look(look),
      m_top(new QHBoxLayout),
      m_model(new ProblemsModel(this)),
      m_rows(new ProblemsFilter(this)),
      m_table(new QTableView(this)),
      m_search(new QLineEdit(this)),
      m_summary(new QLabel(this)),
      m_again(new QPushButton(QStringLiteral("Проверить снова"), this))
{
    m_rows->setSourceModel(m_model);
    m_search->setPlaceholderText(QStringLiteral("Найти"));
    m_search->setAccessibleName(QStringLiteral("Найти"));
    m_table->setAccessibleName(QStringLiteral("Замечания"));
    m_search->setClearButtonEnabled(true);
    m_again->setAutoDefault(false);
    buildTable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_top->addWidget(m_summary, 1);
    for (const auto severity : {Problem::Error, Problem::Remark})
        m_top->addWidget(makeFilter(severity));
    m_top->addWidget(m_search, 1);
    m_top->addWidget(m_again);
    layout->addLayout(m_top);
    layout->addWidget(m_table, 1);
    if (look == Large)
        makeLarge();
    // Tab goes through them as they stand, not as they were made.
    for (QWidget *next :
         std::initializer_list<QWidget *>{m_table, m_again, m_search, m_filters[Problem::Remark]})
        setTabOrder(m_filters[Problem::Error], next);
    m_summary->setVisible(look == Large);
    m_again->setVisible(look == Large);
    connect(m_search, &QLineEdit::textChanged, m_rows, &ProblemsFilter::setFilterFixedString);
    connect(m_again, &QPushButton::clicked, this, [this] { check(m_core); });
    connect(&m_check, &ProblemsCheck::found, this, &ProblemsView::take);
    connect(&m_check, &ProblemsCheck::finished, this, &ProblemsView::finish);
    connect(&m_check, &ProblemsCheck::progressed, this, &ProblemsView::tellProgress);
}

void ProblemsView::buildTable()
{
    m_table->setModel(m_rows);
    m_table->setSelectionBehavior(QTableView::SelectRows);
    m_table->setSelectionMode(m_look == Large ? QTableView::SingleSelection
                                              : QTableView::ExtendedSelection);
    m_table->setEditTriggers(QTableView::NoEditTriggers);
    m_table->setWordWrap(true);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->setColumnWidth(ProblemsModel::SeverityColumn, severityWidth[m_look]);
    m_table->setColumnWidth(ProblemsModel::PlaceColumn, placeWidth[m_look]);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(ProblemsModel::SeverityColumn, Qt::AscendingOrder);
    connect(m_table, &QTableView::activated, this, &ProblemsView::onActivated);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ProblemsView::chosenChanged);
    connect(m_rows, &QAbstractItemModel::modelReset, this, &ProblemsView::chosenChanged);
}

void ProblemsView::addTool(QWidget *tool)
{
    m_top->addWidget(tool);
    setTabOrder(m_again, tool);
}

std::vector<Problem> ProblemsView::chosen() const
{
    std::vector<Problem> problems;
    const QModelIndexList rows = m_table->selectionModel()->selectedRows();
    for (const QModelIndex &row : rows)
        problems.push_back(m_model->problem(m_rows->mapToSource(row).row()));
    return problems;
}

void ProblemsView::makeLarge()
{
    for (QWidget *widget :
         {static_cast<QWidget *>(m_search), static_cast<QWidget *>(m_summary),
          static_cast<QWidget *>(m_table), static_cast<QWidget *>(m_table->horizontalHeader())})
        MakeLegible(*widget);
    for (QPushButton *button : {m_again, m_filters[Problem::Error], m_filters[Problem::Remark]})
        MakeTouchable(*button);
    m_search->setMinimumHeight(TouchSize);
    m_table->verticalHeader()->setDefaultSectionSize(TouchSize);
}

QSize ProblemsView::sizeHint() const
{
    constexpr QSize desk(600, 150);
    return m_look == Large ? QWidget::sizeHint() : desk;
}

void ProblemsView::check(const Nodes::systemCore *core)
{
    m_model->clear();
    m_summary->setText(QStringLiteral("Идёт проверка…"));
    checkAgain(core);
    m_isReplacing = false;
}

void ProblemsView::checkAgain(const Nodes::systemCore *core)
{
    m_core = core;
    m_isReplacing = true;
    m_found.clear();
    m_again->setEnabled(false);
    m_check.start(core);
}

QPushButton *ProblemsView::makeFilter(Problem::enSeverity severity)
{
    auto *button = new QPushButton(this);
    button->setCheckable(true);
    button->setChecked(true);
    button->setAutoDefault(false);
    button->setToolTip(severity == Problem::Error ? QStringLiteral("Показывать ошибки")
                                                  : QStringLiteral("Показывать замечания"));
    connect(button, &QPushButton::toggled, m_rows,
            [this, severity](bool isShown) { m_rows->setShown(severity, isShown); });
    m_filters[severity] = button;
    return button;
}

void ProblemsView::setShown(Problem::enSeverity severity, bool isShown)
{
    m_filters[severity]->setChecked(isShown);
}

void ProblemsView::take(const std::vector<Problem> &problems)
{
    if (m_isReplacing)
        m_found.insert(m_found.end(), problems.begin(), problems.end());
    else
        m_model->append(problems);
}

void ProblemsView::finish()
{
    if (m_isReplacing)
        m_model->replace(m_found);
    m_found.clear();
    m_isReplacing = false;
    m_again->setEnabled(true);
    tellCounts();
    fitRows();
}

// Of longer lists the tool tips have what is cut off. While the view is not laid out its columns
// are narrow, and rows would be as high as their texts in them.
void ProblemsView::fitRows()
{
    if (isVisible() && m_rows->rowCount() <= fittedRows)
        m_table->resizeRowsToContents();
}

void ProblemsView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    QTimer::singleShot(0, this, &ProblemsView::fitRows); // when it has its size
}

void ProblemsView::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (event->size().width() != event->oldSize().width())
        QTimer::singleShot(0, this, &ProblemsView::fitRows);
}

void ProblemsView::tellCounts()
{
    const int errors = m_model->count(Problem::Error);
    const int remarks = m_model->count(Problem::Remark);
    m_filters[Problem::Error]->setText(QStringLiteral("✕ Ошибки: %L1").arg(errors));
    m_filters[Problem::Remark]->setText(QStringLiteral("○ Замечания: %L1").arg(remarks));
    m_summary->setText(errors + remarks == 0
                           ? QStringLiteral("Проблем не найдено")
                           : QStringLiteral("Ошибок: %1, замечаний: %2").arg(errors).arg(remarks));
}

void ProblemsView::tellProgress(int done, int count)
{
    if (done >= count || m_isReplacing)
        return;
    tellCounts();
    m_summary->setText(QStringLiteral("Проверено узлов: %1 из %2. ").arg(done).arg(count) +
                       m_summary->text());
}

QString ProblemsView::summary() const
{
    return m_summary->text();
}

void ProblemsView::onActivated(const QModelIndex &index)
{
    const Problem chosen = m_model->problem(m_rows->mapToSource(index).row());
    if (chosen.node.GetNode())
        emit nodeActivated(chosen.node, chosen.property);
}

} // namespace Widgets
