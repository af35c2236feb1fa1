#include "editor/usages/RemovalDialog.h"

#include "editor/picker/NodePicker.h"
#include "editor/tree/KindIcons.h"
#include "editor/usages/UsagesModel.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <unordered_map>

namespace Editor {

namespace {

enum enColumn { ColumnNode, ColumnCount, ColumnReplacement };

QTreeWidget *makeList(QWidget *parent)
{
    auto *list = new QTreeWidget(parent);
    list->setAccessibleName(QStringLiteral("Удаляемые узлы"));
    list->setHeaderLabels(
        {QStringLiteral("Удаляется"), QStringLiteral("Ссылок"), QStringLiteral("Ссылки вести на")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setTextElideMode(Qt::ElideMiddle);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->header()->resizeSection(ColumnNode, list->fontMetrics().averageCharWidth() * 46);
    return list;
}

QTreeView *makeView(UsagesModel &model, QWidget *parent)
{
    auto *view = new QTreeView(parent);
    view->setAccessibleName(QStringLiteral("Кто ссылается"));
    view->setObjectName(QStringLiteral("users"));
    view->setModel(&model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setTextElideMode(Qt::ElideMiddle); // paths tell by their ends
    const int letter = view->fontMetrics().averageCharWidth();
    view->header()->resizeSection(UsagesModel::ColumnWho, letter * 24);
    view->header()->resizeSection(UsagesModel::ColumnProperty, letter * 18);
    view->header()->resizeSection(UsagesModel::ColumnKind, letter * 18);
    view->header()->resizeSection(UsagesModel::ColumnPath, letter * 40);
    return view;
}

QString question(const Nodes::NodeLinks &nodes, const Usages &usages)
{
    const QString what = nodes.size() == 1
                             ? QStringLiteral("На узел «%1» или узлы под ним ссылаются другие узлы")
                                   .arg(QString::fromStdString(nodes.front().GetLinkName()))
                             : QStringLiteral("На удаляемые узлы ссылаются другие узлы");
    return QStringLiteral("%1 (ссылок: %2). При удалении эти ссылки будут очищены. Чтобы сохранить "
                          "привязки, выберите узлы, на которые ссылки вести вместо удаляемых.")
        .arg(what)
        .arg(usages.size());
}

} // namespace

RemovalDialog::RemovalDialog(Workspace &workspace, const Nodes::NodeLinks &nodes,
                             const Usages &usages)
    : QDialog(workspace.window()),
      m_workspace(workspace),
      m_nodes(nodes),
      m_usages(usages),
      m_list(makeList(this)),
      m_model(new UsagesModel(this)),
      m_view(makeView(*m_model, this))
{
    setWindowTitle(QStringLiteral("Удаление узлов, на которые есть ссылки"));
    resize(980, 620);
    auto *text = new QLabel(question(nodes, usages), this);
    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    auto *pick =
        buttons->addButton(QStringLiteral("Выбрать замену…"), QDialogButtonBox::ActionRole);
    pick->setObjectName(QStringLiteral("pick"));
    auto *remove = buttons->addButton(QStringLiteral("Удалить"), QDialogButtonBox::AcceptRole);
    remove->setObjectName(QStringLiteral("remove"));
    auto *cancel = buttons->addButton(QStringLiteral("Отмена"), QDialogButtonBox::RejectRole);
    cancel->setDefault(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(text);
    layout->addWidget(m_list, 2);
    layout->addWidget(new QLabel(QStringLiteral("Кто ссылается:"), this));
    layout->addWidget(m_view, 3);
    layout->addWidget(buttons);

    addTargets(usages);
    connect(pick, &QPushButton::clicked, this, &RemovalDialog::pickReplacement);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &RemovalDialog::showUsages);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &RemovalDialog::pickReplacement);
    if (m_targets.size() == 1)
        m_list->setCurrentItem(m_list->topLevelItem(0));
    showUsages();
    cancel->setFocus();
}

RemovalDialog::~RemovalDialog() = default;

void RemovalDialog::addTargets(const Usages &usages)
{
    std::unordered_map<unsigned long, int> counts;
    for (const Usage &usage : usages) {
        if (counts[usage.target.GetNodeId()]++ == 0)
            m_targets.push_back(usage.target);
    }
    for (const Nodes::NodeLink &target : m_targets) {
        auto *item = new QTreeWidgetItem(m_list);
        item->setText(ColumnNode, QString::fromStdString(target.GetLinkName(true)));
        item->setToolTip(ColumnNode, item->text(ColumnNode));
        item->setIcon(ColumnNode, KindIcons::of(target.GetNodeType()));
        item->setText(ColumnCount, QString::number(counts[target.GetNodeId()]));
        item->setTextAlignment(ColumnCount, Qt::AlignRight | Qt::AlignVCenter);
        showTarget(int(m_list->topLevelItemCount()) - 1);
    }
}

void RemovalDialog::showTarget(int row)
{
    const auto found = m_replacements.find(m_targets[std::size_t(row)]);
    const bool isReplaced = found != m_replacements.end();
    m_list->topLevelItem(row)->setText(
        ColumnReplacement, isReplaced ? QString::fromStdString(found->second.GetLinkName(true))
                                      : QStringLiteral("(очистить)"));
}

Nodes::NodeLinks RemovalDialog::chosenTargets() const
{
    Nodes::NodeLinks targets;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (m_list->topLevelItem(row)->isSelected())
            targets.push_back(m_targets[std::size_t(row)]);
    }
    return targets.empty() ? m_targets : targets;
}

void RemovalDialog::showUsages()
{
    const Nodes::NodeLinks targets = chosenTargets();
    Usages shown;
    for (const Usage &usage : m_usages) {
        if (std::find(targets.begin(), targets.end(), usage.target) != targets.end())
            shown.push_back(usage);
    }
    m_model->setUsages(std::move(shown));
}

bool RemovalDialog::isGoing(const Nodes::ConfigNode &node) const
{
    const std::vector<Nodes::ConfigNode *> path = node.GetPathNodes();
    return std::any_of(path.begin(), path.end(), [this](const Nodes::ConfigNode *above) {
        return std::find(m_nodes.begin(), m_nodes.end(), Nodes::NodeLink(above)) != m_nodes.end();
    });
}

void RemovalDialog::replace(const Nodes::NodeLinks &from, const Nodes::NodeLink &to)
{
    for (std::size_t row = 0; row < m_targets.size(); ++row) {
        const Nodes::NodeLink &target = m_targets[row];
        const bool canLeadThere =
            to.isEmpty() || to.GetNodeType().GetFamily() == target.GetNodeType().GetFamily();
        if (!canLeadThere || std::find(from.begin(), from.end(), target) == from.end())
            continue;
        if (to.isEmpty())
            m_replacements.erase(target);
        else
            m_replacements[target] = to;
        showTarget(int(row));
    }
}

void RemovalDialog::pickReplacement()
{
    const Nodes::NodeLinks targets = chosenTargets();
    Nodes::NodesCollection *project = targets.front().GetNodesCollection();
    if (!project)
        return;
    const Nodes::NodeType type = targets.front().GetNodeType();
    const auto fits = [this, type](const Nodes::ConfigNode &node) {
        return node.GetNodeType().GetFamily() == type.GetFamily() && !isGoing(node);
    };
    const Nodes::NodeLink picked =
        NodePicker::pick(project, QStringLiteral("На какой узел вести ссылки"), fits, {}, this);
    if (!picked.isEmpty())
        replace(targets, picked);
}

std::vector<std::pair<Nodes::NodeLink, Nodes::NodeLink>> RemovalDialog::replacements() const
{
    return {m_replacements.begin(), m_replacements.end()};
}

} // namespace Editor
