#include "editor/users/RolesPage.h"

#include "editor/picker/NodePicker.h"
#include "editor/users/SecurityNodes.h"
#include "editor/users/UserEdits.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/PrivilegeSet.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityRole.h"
#include "nodes/model/KindInfo.h"
#include "utils/undo/ChangeTextCommand.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

using Nodes::NodeLink;
using Nodes::securityGrant;

namespace {

constexpr int linkRole = Qt::UserRole;
enum Column { Mode, Scope, FirstPrivilege };
constexpr int columnCount = FirstPrivilege + Nodes::PrivilegeConfigure;

QPushButton *button(QLayout &layout, const QString &text, QWidget *parent)
{
    auto *made = new QPushButton(text, parent);
    layout.addWidget(made);
    return made;
}

} // namespace

RolesPage::RolesPage(Workspace &workspace, const NodeLink &authentication, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_authentication(authentication),
      m_roles(new QListWidget(this)),
      m_rules(new QTableWidget(0, columnCount, this))
{
    m_roles->setObjectName(QStringLiteral("roleList"));
    m_rules->setObjectName(QStringLiteral("rules"));
    makeHeader();
    auto *roleButtons = new QHBoxLayout;
    auto *left = new QVBoxLayout;
    auto *ruleButtons = new QHBoxLayout;
    connect(button(*left, tr("Добавить роль"), this), &QPushButton::clicked, this,
            &RolesPage::addRole);
    connect(button(*roleButtons, tr("Имя…"), this), &QPushButton::clicked, this,
            &RolesPage::renameRole);
    connect(button(*roleButtons, tr("Удалить"), this), &QPushButton::clicked, this,
            &RolesPage::removeRole);
    connect(button(*ruleButtons, tr("Добавить правило"), this), &QPushButton::clicked, this,
            &RolesPage::addRule);
    connect(button(*ruleButtons, tr("Область…"), this), &QPushButton::clicked, this,
            &RolesPage::pickScope);
    connect(button(*ruleButtons, tr("Весь проект"), this), &QPushButton::clicked, this,
            &RolesPage::dropScope);
    connect(button(*ruleButtons, tr("Удалить правило"), this), &QPushButton::clicked, this,
            &RolesPage::removeRule);
    ruleButtons->addStretch();
    left->addLayout(roleButtons);
    left->addWidget(m_roles, 1);
    auto *right = new QVBoxLayout;
    right->addLayout(ruleButtons);
    right->addWidget(m_rules, 1);
    auto *hint = new QLabel(tr("Решает правило, чья область ближе к узлу; на равном расстоянии — "
                               "запрет. Двойной щелчок по действию или области меняет их."),
                            this);
    hint->setWordWrap(true);
    right->addWidget(hint);
    auto *layout = new QHBoxLayout(this);
    m_roles->setMaximumWidth(190);
    layout->addLayout(left);
    layout->addLayout(right, 1);
    connect(m_roles, &QListWidget::currentRowChanged, this, &RolesPage::showRules);
    connect(m_rules, &QTableWidget::itemChanged, this, &RolesPage::take);
    connect(m_rules, &QTableWidget::itemDoubleClicked, this, [this](const QTableWidgetItem *item) {
        const auto *rule = dynamic_cast<const securityGrant *>(grantOf(item->row()).GetNode());
        if (rule && item->column() == Mode)
            UserEdits::setDenial(m_workspace, grantOf(item->row()), !rule->isDenial());
        else if (rule && item->column() == Scope)
            pickScope();
    });
}

RolesPage::~RolesPage() = default;

void RolesPage::makeHeader()
{
    QStringList titles{tr("Действие"), tr("Область")};
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type)
        titles << QString::fromStdString(Nodes::PrivilegeName(Nodes::enPrivilegeType(type)))
                      .replace(QLatin1Char(' '), QLatin1Char('\n'));
    m_rules->setHorizontalHeaderLabels(titles);
    m_rules->setTextElideMode(Qt::ElideLeft); // the end of a path tells the most
    m_rules->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_rules->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_rules->setTextElideMode(Qt::ElideMiddle);
    m_rules->verticalHeader()->hide();
    m_rules->horizontalHeader()->setHighlightSections(false);
    m_rules->horizontalHeader()->setMinimumSectionSize(56);
    m_rules->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_rules->horizontalHeader()->setSectionResizeMode(Scope, QHeaderView::Stretch);
}

NodeLink RolesPage::chosenRole() const
{
    const QListWidgetItem *item = m_roles->currentItem();
    return item
               ? NodeLink(item->data(linkRole).toULongLong(), m_authentication.GetNodesCollection())
               : NodeLink();
}

NodeLink RolesPage::grantOf(int row) const
{
    const QTableWidgetItem *item = m_rules->item(row, Mode);
    return item
               ? NodeLink(item->data(linkRole).toULongLong(), m_authentication.GetNodesCollection())
               : NodeLink();
}

void RolesPage::refresh()
{
    const NodeLink kept = chosenRole();
    {
        const QSignalBlocker blocker(m_roles);
        m_roles->clear();
        for (const NodeLink &role : SecurityNodes::roles(m_authentication)) {
            auto *item = new QListWidgetItem(QString::fromStdString(role->GetName()), m_roles);
            item->setData(linkRole, qulonglong(role.GetNodeId()));
        }
        if (!reveal(kept) && m_roles->count() > 0)
            m_roles->setCurrentRow(0);
    }
    showRules();
}

// A rule is shown in its role.
bool RolesPage::reveal(const NodeLink &node)
{
    const bool isRule = dynamic_cast<const Nodes::securityGrant *>(node.GetNode());
    const NodeLink role = isRule ? NodeLink(node->GetParent()) : node;
    for (int row = 0; row < m_roles->count(); ++row) {
        if (m_roles->item(row)->data(linkRole).toULongLong() != role.GetNodeId())
            continue;
        m_roles->setCurrentRow(row);
        for (int rule = 0; isRule && rule < m_rules->rowCount(); ++rule) {
            if (m_rules->item(rule, 0)->data(linkRole).toULongLong() == node.GetNodeId())
                m_rules->selectRow(rule);
        }
        return true;
    }
    return false;
}

void RolesPage::showRules()
{
    const QSignalBlocker blocker(m_rules);
    const int current = m_rules->currentRow();
    m_rules->setRowCount(0);
    const Nodes::ConfigNode *role = chosenRole().GetNode();
    if (!role)
        return;
    for (const auto &child : role->Children()) {
        if (!dynamic_cast<const securityGrant *>(child.get()))
            continue;
        m_rules->insertRow(m_rules->rowCount());
        showRule(m_rules->rowCount() - 1, child->GetNodeLink());
    }
    if (m_rules->rowCount() > 0)
        m_rules->selectRow(std::min(std::max(current, 0), m_rules->rowCount() - 1));
}

void RolesPage::showRule(int row, const NodeLink &grant)
{
    const auto &rule = dynamic_cast<const securityGrant &>(*grant.GetNode());
    const NodeLink &scope = rule.GetScope();
    auto *mode = new QTableWidgetItem(rule.isDenial() ? tr("✗ Запретить") : tr("✓ Разрешить"));
    mode->setData(linkRole, qulonglong(grant.GetNodeId()));
    mode->setToolTip(QString::fromStdString(rule.GetName()));
    m_rules->setItem(row, Mode, mode);
    m_rules->setItem(row, Scope,
                     new QTableWidgetItem(scope.isEmpty()
                                              ? tr("весь проект")
                                              : QString::fromStdString(scope.GetLinkName(true))));
    const Nodes::PrivilegeSet privileges = rule.GetPrivileges();
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        auto *item = new QTableWidgetItem;
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
        item->setCheckState(privileges.Contains(Nodes::enPrivilegeType(type)) ? Qt::Checked
                                                                              : Qt::Unchecked);
        m_rules->setItem(row, FirstPrivilege + type - 1, item);
    }
}

void RolesPage::take(const QTableWidgetItem *item)
{
    if (item->column() >= FirstPrivilege)
        UserEdits::setPrivilege(m_workspace, grantOf(item->row()),
                                item->column() - FirstPrivilege + 1,
                                item->checkState() == Qt::Checked);
}

void RolesPage::addRole()
{
    const NodeLink role =
        UserEdits::add(m_workspace, m_authentication, Nodes::NodeType(Nodes::securityRole::Code),
                       tr("Новая роль"));
    refresh();
    reveal(role);
}

void RolesPage::renameRole()
{
    const NodeLink role = chosenRole();
    bool isTaken = false;
    const QString name =
        QInputDialog::getText(this, tr("Имя роли"), tr("Имя"), QLineEdit::Normal,
                              QString::fromStdString(role.GetLinkName()), &isTaken);
    if (isTaken && role.isValid())
        m_workspace.push(new Utils::ChangeTextCommand(role, Utils::ChangeTextCommand::Name,
                                                      name.trimmed().toStdString()));
}

void RolesPage::removeRole()
{
    if (!chosenRole().isEmpty())
        UserEdits::remove(m_workspace, {chosenRole()});
}

void RolesPage::addRule()
{
    if (!chosenRole().isEmpty())
        UserEdits::add(m_workspace, chosenRole(), Nodes::NodeType(securityGrant::Code),
                       tr("Правило"));
}

void RolesPage::removeRule()
{
    const NodeLink grant = grantOf(m_rules->currentRow());
    if (!grant.isEmpty())
        UserEdits::remove(m_workspace, {grant});
}

void RolesPage::pickScope()
{
    const NodeLink grant = grantOf(m_rules->currentRow());
    if (!grant.isValid())
        return;
    const auto *descriptor = grant->GetKind()->FindProperty(securityGrant::Prop::Scope.valueId);
    auto *picker = new NodePicker(grant.GetNodesCollection(), *descriptor, this);
    connect(picker, &NodePicker::picked, this, [this, grant](const Nodes::NodeLinks &nodes) {
        UserEdits::setScope(m_workspace, grant, nodes.front());
    });
    picker->open();
}

void RolesPage::dropScope()
{
    const NodeLink grant = grantOf(m_rules->currentRow());
    if (!grant.isEmpty())
        UserEdits::setScope(m_workspace, grant, {});
}

} // namespace Editor
