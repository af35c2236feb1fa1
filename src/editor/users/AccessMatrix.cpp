#include "editor/users/AccessMatrix.h"

#include "editor/project/ProjectSession.h"
#include "editor/users/SecurityNodes.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/AccessReview.h"
#include "nodes/auth/PrivilegeSet.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityUser.h"
#include "nodes/model/ConfigNode.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

using Nodes::AccessReview;
using Nodes::NodeLink;

namespace {

constexpr int reasonRole = Qt::UserRole;
constexpr int ruleRole = Qt::UserRole + 1; // id of the grant

QString toText(const std::string &text)
{
    return QString::fromStdString(text);
}

QString verdict(Nodes::enNodePrivMode mode)
{
    switch (mode) {
    case Nodes::PrivModeGranted:
    case Nodes::PrivModeUnchecked:
        return QStringLiteral("✓");
    case Nodes::PrivModeDenied:
        return QStringLiteral("✗");
    default:
        return QStringLiteral("—");
    }
}

} // namespace

AccessMatrix::AccessMatrix(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_about(new QLabel(this)),
      m_table(new QTableWidget(0, Nodes::PrivilegeConfigure + 1, this)),
      m_reason(new QLabel(this)),
      m_rule(new QPushButton(tr("Открыть правило"), this))
{
    QStringList titles{tr("Кто")};
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type)
        titles << QString::fromStdString(Nodes::PrivilegeName(Nodes::enPrivilegeType(type)))
                      .replace(QLatin1Char(' '), QLatin1Char('\n'));
    m_table->setObjectName(QStringLiteral("matrix"));
    m_table->setHorizontalHeaderLabels(titles);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_about->setWordWrap(true);
    m_about->setTextFormat(Qt::PlainText);
    auto *whole = new QPushButton(tr("Весь проект"), this);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_about);
    layout->addWidget(whole, 0, Qt::AlignLeft);
    layout->addWidget(m_table, 1);
    auto *why = new QHBoxLayout;
    why->addWidget(m_reason, 1);
    why->addWidget(m_rule);
    layout->addLayout(why);
    m_reason->setObjectName(QStringLiteral("reason"));
    m_reason->setWordWrap(true);
    m_reason->setTextFormat(Qt::PlainText);
    m_rule->setObjectName(QStringLiteral("rule"));
    connect(m_table, &QTableWidget::currentItemChanged, this, &AccessMatrix::tellCell);
    connect(m_table, &QTableWidget::itemActivated, this, &AccessMatrix::openRule);
    connect(m_rule, &QPushButton::clicked, this, &AccessMatrix::openRule);
    connect(&workspace.selection(), &Selection::changed, this, &AccessMatrix::follow);
    connect(whole, &QPushButton::clicked, this, [this] { follow({}); });
}

AccessMatrix::~AccessMatrix() = default;

// Users and roles that are chosen beside it are no objects of rights.
void AccessMatrix::follow(const Nodes::NodeLinks &nodes)
{
    if (!nodes.empty() && nodes.front().GetNodeType().GetFamily() == Nodes::NodeType::TypeSecurity)
        return;
    m_node = nodes.empty() ? NodeLink() : nodes.front();
    if (isVisible())
        refresh();
}

void AccessMatrix::showEvent(QShowEvent *event)
{
    refresh();
    QWidget::showEvent(event);
}

void AccessMatrix::refresh()
{
    const Nodes::NodesCollection *project = m_workspace.session().project();
    const Nodes::ConfigNode *root = m_workspace.session().root();
    const QModelIndex kept = m_table->currentIndex();
    m_table->setRowCount(0);
    if (!project || !root)
        return;
    if (!m_node.isValid())
        m_node = {};
    m_about->setText(
        m_node.isEmpty()
            ? tr("Права на проект в целом. Выберите узел в дереве проекта, чтобы увидеть права на "
                 "него. ✓ — можно, ✗ — запрещено правилом, — — не разрешено.")
            : tr("Права на «%1». ✓ — можно, ✗ — запрещено правилом, — — не разрешено.")
                  .arg(QString::fromStdString(m_node.GetLinkName(true))));
    for (const NodeLink &user : SecurityNodes::users(root->GetNodeLink()))
        addRow(user, true, AccessReview::OfUser(*project, user));
    for (const NodeLink &role : SecurityNodes::roles(root->GetNodeLink()))
        addRow(role, false, AccessReview::OfRole(*project, role));
    m_table->setCurrentCell(std::min(kept.row(), m_table->rowCount() - 1), kept.column());
    tellCell();
}

QString AccessMatrix::reason(const NodeLink &who, int privilege, const AccessReview &review) const
{
    const auto type = Nodes::enPrivilegeType(privilege);
    const auto nameOf = [](const NodeLink &link) {
        return QString::fromStdString(link.GetLinkName());
    };
    const Nodes::enNodePrivMode mode = review.Decide(type, m_node);
    const QString what = tr("%1 — «%2»: ").arg(nameOf(who), toText(Nodes::PrivilegeName(type)));
    const NodeLink by = review.DecidedBy(type, m_node);
    const auto *grant = dynamic_cast<const Nodes::securityGrant *>(by.GetNode());
    if (mode == Nodes::PrivModeUnchecked)
        return what + tr("можно, в проекте нет пользователей, и права не проверяются.");
    const auto *user = dynamic_cast<const Nodes::securityUser *>(who.GetNode());
    if (user && !user->isEnabled())
        return what + tr("нельзя, пользователь не разрешён.");
    if (!grant && user && user->GetRoles().empty())
        return what + tr("нельзя, у пользователя нет ни одной роли.");
    if (!grant)
        return what + tr("нельзя, ни одно правило этого не разрешает.");
    const QString scope =
        grant->GetScope().isEmpty() ? tr("весь проект") : tr("«%1»").arg(nameOf(grant->GetScope()));
    return what + tr("%1 по правилу «%2» роли «%3», его область — %4.")
                      .arg(mode == Nodes::PrivModeGranted ? tr("можно") : tr("нельзя"), nameOf(by),
                           toText(grant->GetParent()->GetName()), scope);
}

void AccessMatrix::tellCell()
{
    const QTableWidgetItem *item = m_table->currentItem();
    const QString why = item ? item->data(reasonRole).toString() : QString();
    m_reason->setText(why.isEmpty() ? tr("Выберите ячейку, чтобы увидеть, почему так.") : why);
    m_rule->setEnabled(item && item->data(ruleRole).toULongLong() != 0);
}

void AccessMatrix::openRule()
{
    const QTableWidgetItem *item = m_table->currentItem();
    const NodeLink grant(item ? item->data(ruleRole).toULongLong() : 0,
                         m_workspace.session().project());
    if (grant.isValid())
        m_workspace.open(grant);
}

void AccessMatrix::addRow(const NodeLink &whose, bool isUser, const AccessReview &review)
{
    const QString own = toText(whose->GetName());
    const QString name = isUser ? own : tr("Роль «%1»").arg(own);
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    auto *who = new QTableWidgetItem(name);
    QFont font = who->font();
    font.setBold(isUser);
    who->setFont(font);
    who->setToolTip(name);
    m_table->setItem(row, 0, who);
    for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type) {
        auto *item =
            new QTableWidgetItem(verdict(review.Decide(Nodes::enPrivilegeType(type), m_node)));
        item->setTextAlignment(Qt::AlignCenter);
        const QString why = reason(whose, type, review);
        item->setToolTip(why);
        item->setData(reasonRole, why);
        item->setData(
            ruleRole,
            qulonglong(review.DecidedBy(Nodes::enPrivilegeType(type), m_node).GetNodeId()));
        m_table->setItem(row, type, item);
    }
}

} // namespace Editor
