#include "editor/compare/CompareView.h"

#include "editor/compare/DifferencesModel.h"
#include "editor/compare/PicturePair.h"
#include "editor/workspace/KeyboardAccess.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/ProjectDiff.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QSplitter>
#include <QTreeView>
#include <QVBoxLayout>

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
      m_pictures(new PicturePair(this))
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
    KeyboardAccess::makeSearchLine(*m_search, tr("Найти"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_tree->setAccessibleName(tr("Различия"));
    auto *top = new QHBoxLayout;
    top->addWidget(m_summary, 2);
    top->addWidget(m_search, 1);
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
    const Nodes::NodeDifference *chosen =
        m_model->difference(m_rows->mapToSource(m_tree->currentIndex()));
    const auto ids = chosen ? std::pair(chosen->before, chosen->after) : std::pair(0UL, 0UL);
    m_after = after;
    const Nodes::ProjectDiff diff(*before.project, *after.project);
    m_model->setDifferences(diff.GetDifferences());
    m_pictures->setProjects(before, after, diff.GetDifferences());
    m_summary->setText(diff.isEmpty()
                           ? tr("Различий нет.")
                           : tr("Отличия: %1.").arg(QString::fromStdString(diff.GetSummary())));
    if (m_model->rowCount() <= expandedRows)
        m_tree->expandAll();
    m_tree->setCurrentIndex(m_rows->index(0, 0));
    for (int row = 0; chosen && row < m_rows->rowCount(); ++row) {
        const QModelIndex index = m_rows->index(row, 0);
        const Nodes::NodeDifference *now = m_model->difference(m_rows->mapToSource(index));
        if (now->before == ids.first && now->after == ids.second)
            m_tree->setCurrentIndex(index);
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
