#include "editor/problems/ProblemsPanel.h"

#include "editor/problems/ProblemMend.h"
#include "editor/project/ProjectSession.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/system/systemCore.h"

#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int delay = 700; // ms; nobody reads while he types

} // namespace

ProblemsPanel::ProblemsPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_view(new Widgets::ProblemsView(this, Widgets::ProblemsView::Compact)),
      m_mend(new QPushButton(tr("&Исправить")))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_view);
    m_view->addTool(m_mend);
    m_mend->setAutoDefault(false);
    KeyboardAccess::keepAllRowsKey(m_view->table());
    connect(m_mend, &QPushButton::clicked, this, &ProblemsPanel::mend);
    connect(m_view, &Widgets::ProblemsView::chosenChanged, this, &ProblemsPanel::showMend);
    connect(&workspace.session(), &ProjectSession::readOnlyChanged, this, &ProblemsPanel::showMend);
    showMend();
    m_timer.setSingleShot(true);
    m_timer.setInterval(delay);
    connect(&m_timer, &QTimer::timeout, this, &ProblemsPanel::check);
    connect(&workspace.session(), &ProjectSession::opened, this, &ProblemsPanel::begin);
    connect(&workspace.session(), &ProjectSession::closed, this, &ProblemsPanel::end);
    connect(m_view, &Widgets::ProblemsView::nodeActivated, this, &ProblemsPanel::goTo);
    if (workspace.session().isOpen())
        begin();
}

void ProblemsPanel::begin()
{
    m_changes = m_workspace.session().project()->ConnectChanged(
        [this](const Nodes::NodeChange &) { m_timer.start(); });
    m_view->check(&m_workspace.session().core());
}

void ProblemsPanel::end()
{
    m_changes.Disconnect();
    m_timer.stop();
    m_view->check(nullptr);
}

void ProblemsPanel::check()
{
    m_view->checkAgain(&m_workspace.session().core());
}

void ProblemsPanel::showMend()
{
    QStringList texts;
    int count = 0;
    for (const Widgets::Problem &problem : m_view->chosen()) {
        const QString text = ProblemMend::describe(problem);
        count += text.isEmpty() ? 0 : 1;
        if (!text.isEmpty() && !texts.contains(text))
            texts << text;
    }
    m_mend->setEnabled(count > 0 && !m_workspace.session().isReadOnly());
    m_mend->setText(count > 1 ? tr("&Исправить (%1)").arg(count) : tr("&Исправить"));
    m_mend->setToolTip(texts.isEmpty()
                           ? tr("Выберите то, что можно исправить без раздумий: ссылки в никуда, "
                                "повторы имён, недействующие атрибуты")
                           : texts.join(QStringLiteral(".\n")) + tr(".\nОдним шагом, его можно "
                                                                    "отменить."));
}

void ProblemsPanel::mend()
{
    QUndoCommand *command = ProblemMend::make(m_view->chosen());
    if (command && m_workspace.push(command))
        m_workspace.tell(Workspace::Info, tr("Исправлено одним шагом, отмена — Ctrl+Z."));
    check();
}

void ProblemsPanel::goTo(const Nodes::NodeLink &node, const QString &property)
{
    m_workspace.open(node);
    m_workspace.revealProperty(node, property);
}

} // namespace Editor
