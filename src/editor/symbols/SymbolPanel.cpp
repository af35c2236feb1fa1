#include "editor/symbols/SymbolPanel.h"

#include "editor/panel/PaletteView.h"
#include "editor/project/ProjectSession.h"
#include "editor/symbols/SymbolCommands.h"
#include "editor/symbols/SymbolModel.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QSortFilterProxyModel>
#include <QVBoxLayout>

namespace Editor {

namespace {

/// Those of one group, or of all, whose title or file has the words.
class SymbolFilter : public QSortFilterProxyModel
{
public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void find(const QString &group, const QString &text)
    {
        m_group = group;
        m_words = text.split(' ', Qt::SkipEmptyParts);
        invalidateFilter();
    }

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override
    {
        const QModelIndex index = sourceModel()->index(row, 0, parent);
        if (!m_group.isEmpty() && index.data(SymbolModel::Group).toString() != m_group)
            return false;
        const QString text = index.data(Qt::DisplayRole).toString() + ' ' +
                             index.data(SymbolModel::Source).toString();
        return std::all_of(m_words.begin(), m_words.end(), [&text](const QString &word) {
            return text.contains(word, Qt::CaseInsensitive);
        });
    }

private:
    QString m_group;
    QStringList m_words;
};

} // namespace

SymbolPanel::SymbolPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_model(new SymbolModel(this)),
      m_found(new SymbolFilter(this)),
      m_search(new QLineEdit),
      m_groups(new QComboBox),
      m_list(new PaletteView<QListView>)
{
    m_found->setSourceModel(m_model);
    KeyboardAccess::makeSearchLine(*m_search, tr("Найти мнемосимвол"));
    makeList();
    m_groups->setAccessibleName(tr("Группа"));
    m_list->setAccessibleName(tr("Мнемосимволы"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_search);
    layout->addWidget(m_groups);
    layout->addWidget(m_list);
    connect(m_search, &QLineEdit::textChanged, this, &SymbolPanel::search);
    connect(m_groups, qOverload<int>(&QComboBox::activated), this, &SymbolPanel::search);
    connect(m_list, &QListView::activated, this, &SymbolPanel::insert);
    connect(&workspace.session(), &ProjectSession::opened, this, &SymbolPanel::showProject);
    connect(&workspace.session(), &ProjectSession::closed, this, &SymbolPanel::showProject);
    showProject();
}

void SymbolPanel::makeList()
{
    m_list->setModel(m_found);
    m_list->setViewMode(QListView::IconMode);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setMovement(QListView::Static);
    m_list->setUniformItemSizes(true);
    m_list->setWordWrap(true);
    m_list->setIconSize({SymbolModel::PictureSize, SymbolModel::PictureSize});
    m_list->setGridSize({SymbolModel::ItemWidth + 2, SymbolModel::ItemHeight + 4});
    QFont small = m_list->font();
    small.setPointSizeF(small.pointSizeF() - 1);
    m_list->setFont(small); // long words of one symbol beside the other
    m_list->setDragEnabled(true);
    m_list->setDragDropMode(QAbstractItemView::DragOnly);
    m_list->setAccessibleName(tr("Мнемосимволы"));
}

void SymbolPanel::showProject()
{
    m_model->setDirectory(m_workspace.session().isOpen() ? m_workspace.session().directory()
                                                         : QString());
    fillGroups();
    search();
}

void SymbolPanel::fillGroups()
{
    const QString chosen = m_groups->currentData().toString();
    m_groups->clear();
    m_groups->addItem(tr("Все группы"));
    for (int i = 0; i < m_model->rowCount(); ++i) {
        const QString group = m_model->row(i).group;
        if (m_groups->findData(group) < 0)
            m_groups->addItem(group, group);
    }
    m_groups->setCurrentIndex(qMax(0, m_groups->findData(chosen)));
}

void SymbolPanel::search()
{
    static_cast<SymbolFilter *>(m_found)->find(m_groups->currentData().toString(),
                                               m_search->text());
}

void SymbolPanel::insert(const QModelIndex &index)
{
    SymbolCommands::insert(m_workspace, m_model->row(m_found->mapToSource(index).row()));
}

} // namespace Editor
