#include "editor/recovery/HoldKeeper.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "nodes/serial/AtomicFile.h"

namespace Editor {

namespace {

constexpr int lookPeriod = 10000; // ms

} // namespace

HoldKeeper::HoldKeeper(Workspace &workspace, QObject *parent)
    : QObject(parent), m_workspace(workspace)
{
    ProjectSession &session = workspace.session();
    connect(&session, &ProjectSession::opened, this, &HoldKeeper::take);
    connect(&session, &ProjectSession::closed, this, [this] {
        m_hold.Release();
        m_isWaiting = false;
    });
    connect(&session, &ProjectSession::aboutToSave, this, &HoldKeeper::checkSave);
    connect(&m_timer, &QTimer::timeout, this, &HoldKeeper::look);
    m_timer.start(lookPeriod);
}

void HoldKeeper::take()
{
    m_isTold = false;
    m_isWaiting = false;
    ProjectSession &session = m_workspace.session();
    if (session.isReadOnly())
        return; // whoever only looks keeps nobody from editing
    const std::string file = session.file().toStdString();
    const Nodes::Result taken = m_hold.Take(file);
    if (taken) {
        Nodes::RemoveLeftovers(file);
        return;
    }
    m_isWaiting = taken == Nodes::Result::Refused;
    if (m_isWaiting)
        session.setReadOnly(
            tr("проект изменяет %1").arg(QString::fromStdString(m_hold.GetHolder().ToWords())));
    else
        m_workspace.tell(Workspace::Warning,
                         tr("В каталог проекта нельзя писать: сохранить его можно только в другой. "
                            "Изменить проект одновременно может и кто-то ещё."));
}

// What is shown may be old by now: it can be edited only after it was read again.
void HoldKeeper::takeAgain()
{
    if (!m_hold.Take(m_workspace.session().file().toStdString()))
        return;
    m_isWaiting = false;
    m_hold.Release(); // whoever opens it again first
    m_workspace.tell(Workspace::Info,
                     tr("Проект больше никто не изменяет. Откройте его ещё раз, чтобы изменять."));
    m_workspace.session().setReadOnly(
        tr("никто другой проект уже не изменяет, откройте его ещё раз"));
}

void HoldKeeper::look()
{
    if (m_isWaiting)
        takeAgain();
    if (!m_hold.IsLost() || m_isTold)
        return;
    m_isTold = true;
    m_workspace.tell(Workspace::Warning,
                     tr("Отметка о том, что проект изменяете вы, удалена или заменена: его может "
                        "изменить и кто-то ещё. Сохраните проект."));
}

void HoldKeeper::checkSave(Nodes::Result &why)
{
    if (!why || !m_hold.IsLost())
        return;
    const Nodes::Result taken = m_hold.Take(m_workspace.session().file().toStdString());
    if (taken != Nodes::Result::Refused)
        return;
    why = taken;
    m_workspace.tell(Workspace::Error,
                     tr("Проект изменяет %1. Сохраните свою работу в другой каталог.")
                         .arg(QString::fromStdString(m_hold.GetHolder().ToWords())));
}

} // namespace Editor
