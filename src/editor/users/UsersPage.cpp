#include "editor/users/UsersPage.h"

#include "editor/drivers/PropertyForm.h"
#include "editor/users/PasswordDialog.h"
#include "editor/users/SecurityNodes.h"
#include "editor/users/UserEdits.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/securityRole.h"
#include "nodes/auth/securityUser.h"
#include "utils/undo/ChangeTextCommand.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>
#include <QVector>

#include <algorithm>

namespace Editor {

using Nodes::NodeLink;
using Nodes::securityUser;

namespace {

constexpr int linkRole = Qt::UserRole;
enum Column { Login, FullName, Roles, Password, Enabled, ColumnCount };

QString passwordText(const securityUser &user)
{
    if (!user.GetPasswordHash().empty())
        return UsersPage::tr("задан");
    return user.isPasswordless() ? UsersPage::tr("вход без пароля") : UsersPage::tr("не задан");
}

QStringList rowOf(const securityUser &user)
{
    QStringList roles;
    for (const NodeLink &role : user.GetRoles())
        roles << QString::fromStdString(role.GetLinkName());
    return {QString::fromStdString(user.GetName()), QString::fromStdString(user.GetFullName()),
            roles.join(QStringLiteral(", ")), passwordText(user),
            user.isEnabled() ? UsersPage::tr("да") : UsersPage::tr("нет")};
}

// Two forms with one column of names.
void alignNames(QFormLayout &upper, QFormLayout &lower)
{
    lower.setContentsMargins(0, 0, 0, 0);
    int width = 0;
    QVector<QWidget *> labels;
    for (QFormLayout *form : {&upper, &lower}) {
        for (int row = 0; row < form->rowCount(); ++row) {
            if (QLayoutItem *item = form->itemAt(row, QFormLayout::LabelRole))
                labels << item->widget();
        }
    }
    for (const QWidget *label : qAsConst(labels))
        width = std::max(width, label->sizeHint().width());
    for (QWidget *label : qAsConst(labels))
        label->setMinimumWidth(width);
}

} // namespace

UsersPage::UsersPage(Workspace &workspace, const NodeLink &authentication, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_authentication(authentication),
      m_table(new QTableWidget(0, ColumnCount, this)),
      m_form(new QWidget(this)),
      m_formLayout(new QVBoxLayout),
      m_names(new QFormLayout),
      m_name(new QLineEdit(m_form)),
      m_password(new QLabel(m_form)),
      m_drop(new QPushButton(tr("Убрать пароль"), m_form)),
      m_roles(new QListWidget(m_form))
{
    m_table->setObjectName(QStringLiteral("users"));
    m_table->setHorizontalHeaderLabels(
        {tr("Имя входа"), tr("Полное имя"), tr("Роли"), tr("Пароль"), tr("Разрешён")});
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(FullName, QHeaderView::Stretch);
    m_table->horizontalHeader()->setMinimumSectionSize(90);
    m_table->horizontalHeader()->setHighlightSections(false);
    auto *add = new QPushButton(tr("Добавить пользователя"), this);
    auto *remove = new QPushButton(tr("Удалить"), this);
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(add);
    buttons->addWidget(remove);
    buttons->addStretch();
    makeForm();
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(buttons);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_form);
    connect(add, &QPushButton::clicked, this, &UsersPage::addUser);
    connect(remove, &QPushButton::clicked, this, &UsersPage::removeUser);
    connect(m_table, &QTableWidget::itemSelectionChanged, this, &UsersPage::showUser);
}

UsersPage::~UsersPage() = default;

void UsersPage::makeForm()
{
    m_name->setObjectName(QStringLiteral("login"));
    m_roles->setObjectName(QStringLiteral("roles"));
    auto *password = new QPushButton(tr("Задать пароль…"), m_form);
    auto *line = new QHBoxLayout;
    line->addWidget(m_password);
    line->addWidget(password);
    line->addWidget(m_drop);
    line->addStretch();
    m_names->addRow(tr("Имя входа"), m_name);
    m_names->addRow(tr("Пароль"), line);
    m_names->setLabelAlignment(Qt::AlignLeft);
    m_formLayout->addLayout(m_names);
    m_formLayout->addStretch();
    auto *roles = new QVBoxLayout;
    roles->addWidget(new QLabel(tr("Роли"), m_form));
    roles->addWidget(m_roles, 1);
    auto *layout = new QHBoxLayout(m_form);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(m_formLayout, 2);
    layout->addLayout(roles, 1);
    m_roles->setMaximumHeight(120);
    m_form->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    connect(m_name, &QLineEdit::editingFinished, this, &UsersPage::rename);
    connect(password, &QPushButton::clicked, this, &UsersPage::askPassword);
    connect(m_drop, &QPushButton::clicked, this, &UsersPage::dropPassword);
    connect(m_roles, &QListWidget::itemChanged, this, [this](const QListWidgetItem *item) {
        UserEdits::setRole(
            m_workspace, m_shown,
            NodeLink(item->data(linkRole).toULongLong(), m_authentication.GetNodesCollection()),
            item->checkState() == Qt::Checked);
    });
}

NodeLink UsersPage::chosen() const
{
    const QTableWidgetItem *item = m_table->item(m_table->currentRow(), Login);
    return item
               ? NodeLink(item->data(linkRole).toULongLong(), m_authentication.GetNodesCollection())
               : NodeLink();
}

void UsersPage::refresh()
{
    const Nodes::NodeLinks users = SecurityNodes::users(m_authentication);
    const NodeLink kept = chosen();
    {
        const QSignalBlocker blocker(m_table);
        m_table->setRowCount(int(users.size()));
        for (int row = 0; row < int(users.size()); ++row) {
            const auto &user =
                dynamic_cast<const securityUser &>(*users[std::size_t(row)].GetNode());
            const QStringList texts = rowOf(user);
            for (int column = 0; column < ColumnCount; ++column) {
                auto *item = new QTableWidgetItem(texts[column]);
                item->setData(linkRole, qulonglong(user.GetId()));
                m_table->setItem(row, column, item);
            }
        }
    }
    if (!reveal(kept) && !users.empty())
        m_table->selectRow(0);
    showUser();
}

bool UsersPage::reveal(const NodeLink &user)
{
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (m_table->item(row, Login)->data(linkRole).toULongLong() != user.GetNodeId())
            continue;
        m_table->selectRow(row);
        return true;
    }
    return false;
}

void UsersPage::showUser()
{
    const NodeLink user = chosen();
    const auto *node = dynamic_cast<const securityUser *>(user.GetNode());
    m_form->setVisible(node != nullptr);
    if (!node) {
        m_shown = {};
        return;
    }
    const bool isOther = m_shown != user;
    if (isOther) {
        m_shown = user;
        delete m_properties;
        m_properties = new PropertyForm(m_workspace, user, m_form);
        m_formLayout->insertWidget(1, m_properties);
        alignNames(*m_names, *qobject_cast<QFormLayout *>(m_properties->layout()));
        m_workspace.selection().select({user}, this);
    }
    showName(isOther);
    m_password->setText(passwordText(*node));
    m_drop->setEnabled(!node->GetPasswordHash().empty());
    showRoles();
}

// What is being typed stays while the name is what it was; it never becomes another user's name.
void UsersPage::showName(bool isAnew)
{
    const QString name = QString::fromStdString(m_shown.GetLinkName());
    if (!isAnew && name == m_shownName)
        return;
    const QSignalBlocker blocker(m_name);
    m_shownName = name;
    m_name->setText(name);
}

void UsersPage::showRoles()
{
    const auto *user = dynamic_cast<const securityUser *>(m_shown.GetNode());
    const QSignalBlocker blocker(m_roles);
    m_roles->clear();
    for (const NodeLink &role : SecurityNodes::roles(m_authentication)) {
        auto *item = new QListWidgetItem(QString::fromStdString(role->GetName()), m_roles);
        const Nodes::NodeLinks &held = user->GetRoles();
        const bool has = std::find(held.begin(), held.end(), role) != held.end();
        item->setData(linkRole, qulonglong(role.GetNodeId()));
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        item->setCheckState(has ? Qt::Checked : Qt::Unchecked);
    }
}

void UsersPage::addUser()
{
    const NodeLink user = UserEdits::add(
        m_workspace, m_authentication, Nodes::NodeType(securityUser::Code), QStringLiteral("user"));
    if (user.isEmpty())
        return;
    refresh();
    reveal(user);
    m_name->setFocus();
    m_name->selectAll();
}

void UsersPage::removeUser()
{
    if (!chosen().isEmpty())
        UserEdits::remove(m_workspace, {chosen()});
}

void UsersPage::rename()
{
    const Nodes::ConfigNode *user = m_shown.GetNode();
    const std::string name = m_name->text().trimmed().toStdString();
    if (!user || name == user->GetName())
        return;
    m_workspace.push(new Utils::ChangeTextCommand(m_shown, Utils::ChangeTextCommand::Name, name));
    showName(true);
}

void UsersPage::askPassword()
{
    if (m_shown.isEmpty())
        return;
    PasswordDialog dialog(QString::fromStdString(m_shown.GetLinkName()), this);
    if (dialog.exec() == QDialog::Accepted)
        UserEdits::setPassword(m_workspace, m_shown, dialog.password());
}

void UsersPage::dropPassword()
{
    UserEdits::setPassword(m_workspace, m_shown, {});
}

} // namespace Editor
