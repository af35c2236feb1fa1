#include "editor/review/ReviewPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/review/FindingModel.h"
#include "editor/review/ReviewMend.h"
#include "editor/review/ReviewRules.h"
#include "editor/review/ReviewRun.h"
#include "editor/review/ReviewScreen.h"
#include "editor/review/SeverityFilter.h"
#include "editor/workspace/DocumentView.h"
#include "editor/workspace/TableFile.h"
#include "editor/workspace/Workspace.h"

#include "nodes/visual/windows/BasicComposition.h"
#include "nodes/visual/windows/windowComposed.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QUndoCommand>

#include <algorithm>

namespace Editor {

namespace {

/// The screen that the document shows; null for another document.
Nodes::ConfigNode *screenOf(const DocumentView *document)
{
    Nodes::ConfigNode *node = document ? document->node().GetNode() : nullptr;
    if (const auto *composed = dynamic_cast<const Nodes::windowComposed *>(node))
        node = composed->GetComposition();
    return node && ReviewScreen::isScreen(*node) ? node : nullptr;
}

} // namespace

ReviewPanel::ReviewPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_run(new ReviewRun(this)),
      m_model(new FindingModel(this)),
      m_sorted(new SeverityFilter(this)),
      m_table(new QTableView),
      m_mend(new QPushButton(tr("&Исправить"))),
      m_details(new QLabel)
{
    m_sorted->setSourceModel(m_model);
    m_sorted->setSortRole(FindingModel::SortRole);
    makeTable();
    m_table->setAccessibleName(tr("Замечания"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(makeBar());
    layout->addWidget(m_table, 1);
    layout->addWidget(makeFoot());
    setFocusProxy(m_active); // what to begin with while there is nothing to look at
    connect(m_run, &ReviewRun::found, m_model, &FindingModel::take);
    connect(m_run, &ReviewRun::progressed, this, &ReviewPanel::takeProgress);
    connect(m_run, &ReviewRun::finished, this, &ReviewPanel::takeEnd);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &ReviewPanel::forget);
}

QWidget *ReviewPanel::makeBar()
{
    auto *bar = new QWidget;
    auto *layout = new QHBoxLayout(bar);
    layout->setContentsMargins(0, 0, 0, 0);
    const auto button = [&](const QString &text, void (ReviewPanel::*slot)()) {
        auto *made = new QPushButton(text);
        connect(made, &QPushButton::clicked, this, slot);
        layout->addWidget(made);
        return made;
    };
    m_active = button(tr("Этот экран"), &ReviewPanel::reviewActive);
    button(tr("Все экраны"), &ReviewPanel::reviewAll);
    m_stop = new QPushButton(tr("Стоп"));
    m_stop->hide();
    connect(m_stop, &QPushButton::clicked, m_run, &ReviewRun::stop);
    layout->addWidget(m_stop);
    m_severity = new QComboBox;
    m_severity->addItems(
        {tr("Всё"), tr("Советы и важнее"), tr("Замечания и ошибки"), tr("Только ошибки")});
    m_severity->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_severity->setMinimumContentsLength(8);
    connect(m_severity, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &ReviewPanel::filter);
    layout->addWidget(m_severity);
    auto *toClipboard = new QPushButton(tr("Копировать"));
    connect(toClipboard, &QPushButton::clicked, this, &ReviewPanel::copy);
    layout->addWidget(toClipboard);
    button(tr("В файл…"), &ReviewPanel::save)->setToolTip(tr("Весь список таблицей CSV"));
    m_state = new QLabel;
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // never widens the dock
    layout->addWidget(m_state, 1);
    return bar;
}

QWidget *ReviewPanel::makeFoot()
{
    auto *foot = new QWidget;
    auto *layout = new QHBoxLayout(foot);
    layout->setContentsMargins(0, 0, 0, 0);
    m_details->setWordWrap(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_details->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_details->setMinimumHeight(3 * m_details->fontMetrics().lineSpacing()); // rows stay in place
    m_mend->setEnabled(false);
    m_mend->setToolTip(tr("Одним шагом, его можно отменить"));
    connect(m_mend, &QPushButton::clicked, this, &ReviewPanel::mend);
    layout->addWidget(m_details, 1);
    layout->addWidget(m_mend, 0, Qt::AlignTop);
    return foot;
}

void ReviewPanel::makeTable()
{
    m_table->setModel(m_sorted);
    m_table->setSortingEnabled(true);
    m_table->sortByColumn(FindingModel::Severity, Qt::DescendingOrder);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 8);
    const int widths[] = {116, 132, 132};
    for (int column = 0; column < FindingModel::What; ++column)
        m_table->setColumnWidth(column, widths[column]);
    for (const int column : {FindingModel::What, FindingModel::Advice})
        m_table->horizontalHeader()->setSectionResizeMode(column, QHeaderView::Stretch);
    connect(m_table, &QTableView::activated, this, &ReviewPanel::jump);
    connect(m_table, &QTableView::clicked, this, &ReviewPanel::jumpByClick);
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ReviewPanel::tell);
}

// The line below the list says all of it.
void ReviewPanel::resizeEvent(QResizeEvent *event)
{
    constexpr int narrow = 1000; // pixels
    QWidget::resizeEvent(event);
    m_table->setColumnHidden(FindingModel::Advice, width() < narrow);
}

void ReviewPanel::reviewActive()
{
    if (Nodes::ConfigNode *screen = screenOf(m_workspace.document()))
        review({Nodes::NodeLink(screen)});
    else
        m_workspace.tell(
            Workspace::Info,
            tr("Откройте окно или композицию, чтобы проверить их, или проверьте все."));
}

void ReviewPanel::reviewAll()
{
    if (const Nodes::ConfigNode *root = m_workspace.session().root())
        review(ReviewScreen::screensBelow(*root));
}

void ReviewPanel::review(const Nodes::NodeLinks &screens)
{
    m_model->clear();
    m_stop->show();
    m_run->start(screens, *m_workspace.session().root());
}

void ReviewPanel::takeProgress(int done, int total)
{
    m_state->setText(tr("%1 из %2").arg(done).arg(total));
}

void ReviewPanel::takeEnd()
{
    m_stop->hide();
    m_state->setText(m_state->text() + tr(", находок: %1").arg(m_model->count()));
    const bool isAnything = m_sorted->rowCount() > 0;
    setFocusProxy(isAnything ? static_cast<QWidget *>(m_table) : m_active);
    if (!isAnything || m_table->currentIndex().isValid())
        return;
    m_table->selectRow(0);
    if (isAncestorOf(QApplication::focusWidget()))
        m_table->setFocus(); // down to the next, Enter leads there
}

void ReviewPanel::forget()
{
    m_run->stop();
    m_model->clear();
    m_state->clear();
    setFocusProxy(m_active);
}

void ReviewPanel::filter()
{
    m_sorted->setLeast(m_severity->currentIndex());
}

QModelIndexList ReviewPanel::selectedRows() const
{
    QModelIndexList rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows << m_sorted->mapToSource(index);
    return rows;
}

void ReviewPanel::tell()
{
    const QModelIndexList rows = selectedRows();
    const auto isMendable = [this](const QModelIndex &row) {
        return !m_model->finding(row.row()).mend.isEmpty();
    };
    const auto mendable = std::count_if(rows.begin(), rows.end(), isMendable);
    m_mend->setEnabled(mendable > 0 && !m_workspace.session().isReadOnly());
    m_mend->setText(mendable > 1 ? tr("&Исправить (%1)").arg(mendable) : tr("&Исправить"));
    if (rows.size() != 1) {
        m_details->setText(rows.isEmpty() ? QString() : tr("Выбрано: %1.").arg(rows.size()));
        return;
    }
    const ReviewFinding &finding = m_model->finding(rows.front().row());
    const ReviewRule *rule = findReviewRule(finding.rule);
    m_details->setText(finding.what + ' ' +
                       (rule ? QString::fromUtf8(rule->why) + ' ' : QString()) + finding.advice);
}

void ReviewPanel::jump(const QModelIndex &index)
{
    const Nodes::NodeLink place = m_model->finding(m_sorted->mapToSource(index).row()).where;
    if (!place.GetNode()) {
        m_workspace.tell(Workspace::Info, tr("Этого элемента больше нет. Проверьте заново."));
        return;
    }
    m_workspace.open(place);
    m_workspace.reveal(place);
    m_workspace.selection().select({place}, this);
}

// A click with a key held selects more.
void ReviewPanel::jumpByClick(const QModelIndex &index)
{
    if (QApplication::keyboardModifiers() != Qt::NoModifier)
        return;
    jump(index);
    m_table->setFocus();
}

void ReviewPanel::mend()
{
    Nodes::NodeLinks screens;
    ReviewFindings findings;
    for (const QModelIndex &row : selectedRows()) {
        screens.push_back(m_model->screen(row.row()));
        findings.append(m_model->finding(row.row()));
    }
    QUndoCommand *command = ReviewMend::make(screens, findings);
    if (command && !m_workspace.push(command))
        return;
    m_workspace.tell(Workspace::Info, command ? tr("Исправлено одним шагом, отмена — Ctrl+Z.")
                                              : tr("Этого больше нет. Экран проверен заново."));
    std::sort(screens.begin(), screens.end());
    screens.erase(std::unique(screens.begin(), screens.end()), screens.end());
    m_run->add(screens, *m_workspace.session().root());
}

void ReviewPanel::copy() const
{
    QApplication::clipboard()->setText(
        QString::fromStdString(Nodes::DelimitedText::Write(m_model->table(), '\t', "\n")));
}

void ReviewPanel::save()
{
    TableFile::save(m_workspace, this, tr("Проверка экранов"), m_model->rowCount(),
                    m_model->table());
}

} // namespace Editor
