#include "editor/compare/CompareView.h"

#include "editor/compare/DifferencesModel.h"
#include "editor/compare/PicturePair.h"
#include "editor/compare/VersionTaking.h"
#include "editor/workspace/KeyboardAccess.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectDiff.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

namespace {

constexpr int expandedRows = 200; // more would take long to lay out, and nobody reads them at once
constexpr int valueWidth = 170;

} // namespace

CompareView::CompareView(QWidget *parent)
    : QWidget(parent),
      m_model(new DifferencesModel(this)),
      m_rows(new QSortFilterProxyModel(this)),
      m_summary(new QLabel(this)),
      m_search(new QLineEdit(this)),
      m_tree(new QTreeView(this)),
      m_pictures(new PicturePair(this)),
      m_take(new QAction(tr("Взять из другой версии"), this)),
      m_takeButton(new QToolButton(this))
{
    m_rows->setSourceModel(m_model);
    m_rows->setRecursiveFilteringEnabled(true);
    m_rows->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_rows->setFilterKeyColumn(-1);
    setFocusProxy(m_tree);
    build();
    connect(m_search, &QLineEdit::textChanged, m_rows,
            &QSortFilterProxyModel::setFilterFixedString);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &CompareView::showChosen);
    connect(m_tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &CompareView::showTaking);
    connect(m_take, &QAction::triggered, this, &CompareView::takeRequested);
    connect(m_tree, &QTreeView::activated, this, &CompareView::onActivated);
}

void CompareView::build()
{
    m_tree->setModel(m_rows);
    m_tree->setUniformRowHeights(true);
    m_tree->setTextElideMode(Qt::ElideMiddle); // the end of a path names the node
    m_tree->setAlternatingRowColors(true);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(DifferencesModel::WhatColumn, QHeaderView::Stretch);
    m_tree->setColumnWidth(DifferencesModel::BeforeColumn, valueWidth);
    m_tree->setColumnWidth(DifferencesModel::AfterColumn, valueWidth);
    m_tree->setSelectionMode(QTreeView::ExtendedSelection);
    KeyboardAccess::keepAllRowsKey(*m_tree);
    m_tree->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_take->setToolTip(tr("Сделать выбранное в открытом проекте таким, как в другой версии; "
                          "отменяется как одно изменение"));
    m_takeButton->setDefaultAction(m_take);
    m_takeButton->setFocusPolicy(Qt::TabFocus);
    setTakeable(false);
    KeyboardAccess::makeSearchLine(*m_search, tr("Найти"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_tree->setAccessibleName(tr("Различия"));
    auto *top = new QHBoxLayout;
    top->addWidget(m_summary, 2);
    top->addWidget(m_search, 1);
    top->addWidget(m_takeButton);
    auto *parts = new QSplitter(Qt::Vertical, this);
    parts->addWidget(m_tree);
    parts->addWidget(m_pictures);
    parts->setSizes({300, 340});
    parts->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(parts, 1);
}

void CompareView::setProjects(const ComparedProject &before, const ComparedProject &after)
{
    const QModelIndex current = m_rows->mapToSource(m_tree->currentIndex());
    const Nodes::NodeDifference *chosen = m_model->difference(current);
    const auto ids = chosen ? std::pair(chosen->before, chosen->after) : std::pair(0UL, 0UL);
    const QModelIndex top = m_tree->currentIndex();
    const int row = (top.parent().isValid() ? top.parent() : top).row();
    m_after = after;
    const Nodes::ProjectDiff diff(*before.project, *after.project);
    m_model->setDifferences(diff.GetDifferences());
    m_pictures->setProjects(before, after, diff.GetDifferences());
    m_summary->setText(diff.isEmpty()
                           ? tr("Различий нет.")
                           : tr("Отличия: %1.").arg(QString::fromStdString(diff.GetSummary())));
    if (m_model->rowCount() <= expandedRows)
        m_tree->expandAll();
    restoreChosen(ids, row);
    showTaking();
}

// Where it differs no more, whatever stands in its row now: the user goes on from there.
void CompareView::restoreChosen(const std::pair<unsigned long, unsigned long> &ids, int row)
{
    const int last = m_rows->rowCount() - 1;
    m_tree->setCurrentIndex(m_rows->index(std::max(0, std::min(row, last)), 0));
    for (int i = 0; i <= last; ++i) {
        const QModelIndex index = m_rows->index(i, 0);
        const Nodes::NodeDifference *now = m_model->difference(m_rows->mapToSource(index));
        if (std::pair(now->before, now->after) == ids)
            m_tree->setCurrentIndex(index);
    }
}

void CompareView::setTakeable(bool on)
{
    m_takeButton->setVisible(on);
    m_tree->removeAction(m_take);
    if (on)
        m_tree->addAction(m_take);
}

void CompareView::showTaking()
{
    const QModelIndexList rows = m_tree->selectionModel()->selectedRows();
    const bool isRemoval = std::all_of(rows.begin(), rows.end(), [this](const QModelIndex &row) {
        return m_model->difference(m_rows->mapToSource(row))->isAdded;
    });
    m_take->setEnabled(!rows.isEmpty());
    m_take->setText(isRemoval && !rows.isEmpty() ? tr("Удалить, как в другой версии")
                                                 : tr("Взять из другой версии"));
}

void CompareView::addChosen(VersionTaking &taking) const
{
    const QItemSelectionModel &selection = *m_tree->selectionModel();
    const QModelIndexList rows = selection.selectedRows();
    for (const QModelIndex &row : rows) {
        const QModelIndex index = m_rows->mapToSource(row);
        const Nodes::PropertyDifference *property = m_model->property(index);
        if (!property)
            taking.take(*m_model->difference(index));
        else if (!selection.isSelected(row.parent()))
            taking.take(*m_model->difference(index), *property);
    }
}

QString CompareView::summary() const
{
    return m_summary->text();
}

void CompareView::showChosen(const QModelIndex &current)
{
    m_pictures->showDifference(m_model->difference(m_rows->mapToSource(current)));
}

void CompareView::onActivated(const QModelIndex &index)
{
    const Nodes::NodeDifference *chosen = m_model->difference(m_rows->mapToSource(index));
    if (chosen && m_after.project->FindNode(chosen->after))
        emit nodeActivated(Nodes::NodeLink(chosen->after, m_after.project));
}

} // namespace Editor
