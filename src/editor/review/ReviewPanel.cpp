#include "editor/review/ReviewPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/review/FindingModel.h"
#include "editor/review/ReviewRun.h"
#include "editor/review/ReviewScreen.h"
#include "editor/workspace/DocumentView.h"
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
#include <QSortFilterProxyModel>
#include <QTableView>

namespace Editor {

namespace {

/// Findings of at least one severity.
class SeverityFilter : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setLeast(int severity)
    {
        m_least = severity;
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const QModelIndex index = sourceModel()->index(row, FindingModel::Severity, parent);
        return index.data(FindingModel::SortRole).toInt() >= m_least;
    }

private:
    int m_least = 0;
};

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
      m_details(new QLabel)
{
    m_sorted->setSourceModel(m_model);
    m_sorted->setSortRole(FindingModel::SortRole);
    makeTable();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(makeBar());
    layout->addWidget(m_table, 1);
    m_details->setWordWrap(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(m_details);
    connect(m_run, &ReviewRun::found, m_model, &FindingModel::append);
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
    button(tr("Этот экран"), &ReviewPanel::reviewActive);
    button(tr("Все экраны"), &ReviewPanel::reviewAll);
    m_stop = new QPushButton(tr("Стоп"));
    m_stop->setEnabled(false);
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
    m_state = new QLabel;
    m_state->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // never widens the dock
    layout->addWidget(m_state, 1);
    return bar;
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
    const int widths[] = {110, 150, 150, 460};
    for (int column = 0; column < FindingModel::Advice; ++column)
        m_table->setColumnWidth(column, widths[column]);
    m_table->horizontalHeader()->setStretchLastSection(true);
    connect(m_table, &QTableView::activated, this, &ReviewPanel::jump);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ReviewPanel::tell);
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
    m_stop->setEnabled(true);
    m_run->start(screens, *m_workspace.session().root());
}

void ReviewPanel::takeProgress(int done, int total)
{
    m_state->setText(tr("Проверено %1 из %2").arg(done).arg(total));
}

void ReviewPanel::takeEnd()
{
    m_stop->setEnabled(false);
    m_state->setText(m_state->text() + tr(", находок: %1").arg(m_model->count()));
}

void ReviewPanel::forget()
{
    m_run->stop();
    m_model->clear();
    m_state->clear();
}

void ReviewPanel::filter()
{
    static_cast<SeverityFilter *>(m_sorted)->setLeast(m_severity->currentIndex());
}

void ReviewPanel::tell(const QModelIndex &index)
{
    if (!index.isValid()) {
        m_details->clear();
        return;
    }
    const ReviewFinding &finding = m_model->finding(m_sorted->mapToSource(index).row());
    m_details->setText(finding.what + ' ' + finding.advice);
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

void ReviewPanel::copy() const
{
    QApplication::clipboard()->setText(m_model->text());
}

} // namespace Editor
