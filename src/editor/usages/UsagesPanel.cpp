#include "editor/usages/UsagesPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/usages/UsagesModel.h"
#include "editor/workspace/DockRaise.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QHeaderView>
#include <QLabel>
#include <QTreeView>
#include <QVBoxLayout>

namespace Editor {

namespace {

QTreeView *makeView(UsagesModel &model, QWidget *parent)
{
    auto *view = new QTreeView(parent);
    view->setAccessibleName(QStringLiteral("Использование"));
    view->setModel(&model);
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAlternatingRowColors(true);
    view->setTextElideMode(Qt::ElideMiddle); // paths tell by their ends
    const int letter = view->fontMetrics().averageCharWidth();
    const int widths[] = {26, 20, 20, 44};
    for (int column = 0; column < UsagesModel::ColumnTarget; ++column)
        view->header()->resizeSection(column, letter * widths[column]);
    return view;
}

QString titleOf(const Nodes::NodeLinks &targets, std::size_t count)
{
    if (targets.empty())
        return QStringLiteral("Выделите узлы и выберите «Найти использование» (Shift+F12)");
    const QString what = targets.size() == 1
                             ? QString::fromStdString(targets.front().GetLinkName(true))
                             : QStringLiteral("узлов: %1").arg(targets.size());
    return count == 0 ? QStringLiteral("%1 — никто не ссылается").arg(what)
                      : QStringLiteral("%1 — ссылок: %2").arg(what).arg(count);
}

} // namespace

UsagesPanel::UsagesPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_title(new QLabel(this)),
      m_model(new UsagesModel(this)),
      m_view(makeView(*m_model, this))
{
    m_title->setTextFormat(Qt::PlainText);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // paths may be long
    m_due.setSingleShot(true);
    m_due.setInterval(100);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_title);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    connect(&m_due, &QTimer::timeout, this, &UsagesPanel::refresh);
    connect(&workspace.session(), &ProjectSession::opened, this, &UsagesPanel::takeProject);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &UsagesPanel::letProjectGo);
    connect(m_view, &QTreeView::activated, this, &UsagesPanel::revealAt);
    takeProject();
    refresh();
}

UsagesPanel::~UsagesPanel() = default;

void UsagesPanel::takeProject()
{
    Nodes::NodesCollection *project = m_workspace.session().project();
    if (project)
        m_connection = project->ConnectChanged([this](const auto &) {
            if (!m_targets.empty())
                m_due.start();
        });
}

void UsagesPanel::letProjectGo()
{
    m_connection = Nodes::Connection();
    setTargets({});
}

void UsagesPanel::setTargets(const Nodes::NodeLinks &nodes)
{
    m_targets = nodes;
    refresh();
}

void UsagesPanel::refresh()
{
    m_due.stop();
    m_model->setUsages(FindUsages(m_targets));
    m_title->setText(titleOf(m_targets, m_model->usages().size()));
    m_title->setToolTip(m_title->text());
}

void UsagesPanel::revealAt(const QModelIndex &index)
{
    const Usage *usage = m_model->usageAt(index);
    if (!usage || !usage->use.node.isValid())
        return;
    const Nodes::NodeLink node = usage->use.node; // the list may be made anew meanwhile
    m_workspace.open(node);
    m_workspace.reveal(node);
}

void UsagesPanel::showFor(Workspace &workspace, const Nodes::NodeLinks &nodes)
{
    auto *panel = workspace.window()->findChild<UsagesPanel *>();
    if (!panel)
        return;
    panel->setTargets(nodes);
    raiseDock(*panel);
    panel->setFocus(Qt::OtherFocusReason);
}

} // namespace Editor
