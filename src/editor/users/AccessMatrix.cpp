#include "editor/users/AccessMatrix.h"

#include "editor/project/ProjectSession.h"
#include "editor/users/SecurityNodes.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/AccessReview.h"
#include "nodes/auth/PrivilegeSet.h"
#include "nodes/model/ConfigNode.h"

#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace Editor {

using Nodes::AccessReview;
using Nodes::NodeLink;

namespace {

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
      m_table(new QTableWidget(0, Nodes::PrivilegeConfigure + 1, this))
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
        addRow(QString::fromStdString(user->GetName()), true, AccessReview::OfUser(*project, user));
    for (const NodeLink &role : SecurityNodes::roles(root->GetNodeLink()))
        addRow(tr("Роль «%1»").arg(QString::fromStdString(role->GetName())), false,
               AccessReview::OfRole(*project, role));
}

void AccessMatrix::addRow(const QString &name, bool isUser, const AccessReview &review)
{
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
        m_table->setItem(row, type, item);
    }
}

} // namespace Editor
