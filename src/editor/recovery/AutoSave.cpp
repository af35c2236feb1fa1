#include "editor/recovery/AutoSave.h"

#include "editor/project/ProjectSession.h"

#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/values/Clock.h"

#include <QPointer>
#include <QSocketNotifier>

#include <cstdlib>

namespace Editor {

namespace {

QPointer<AutoSave> latest; // of the GUI thread

// The display that goes away ends the program from within, past everything that waits on the stack.
void keepAtExit()
{
    AutoSave *const autoSave = latest;
    latest.clear();
    if (autoSave)
        autoSave->keepAtOnce();
}

} // namespace

AutoSave::AutoSave(ProjectSession &session, QObject *parent)
    : QObject(parent),
      m_session(session),
      m_directory(QString::fromStdString(Nodes::RecoveryFile::DefaultDirectory()))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &AutoSave::keep);
    connect(&session, &ProjectSession::opened, this, &AutoSave::begin);
    connect(&session, &ProjectSession::saved, this, &AutoSave::begin);
    connect(&session, &ProjectSession::modifiedChanged, this, &AutoSave::onModified);
    connect(&session, &ProjectSession::abandoned, this, [this] { m_isAbandoned = true; });
    connect(&session, &ProjectSession::keptOn, this, [this] { m_isAbandoned = false; });
    connect(&session, &ProjectSession::aboutToClose, this, &AutoSave::onClosing);
    connect(&session, &ProjectSession::replacing, this, &AutoSave::onReplacing);
    if (session.isOpen())
        begin();
    latest = this;
}

AutoSave::~AutoSave()
{
    if (m_session.isOpen())
        onClosing();
}

void AutoSave::begin()
{
    // Each time: it has to run before what reading and writing projects has made until now goes.
    (void)std::atexit(keepAtExit);
    m_base = m_session.stamp().GetDigest();
    m_changes = m_session.project()->ConnectChanged([this](const Nodes::NodeChange &) { touch(); });
}

void AutoSave::touch()
{
    m_isAbandoned = false; // whoever goes on has not left
    if (!m_timer.isActive())
        m_timer.start(m_period);
}

// Undone to what is saved is as good as saved.
void AutoSave::onModified(bool isModified)
{
    if (isModified)
        touch();
    else
        drop();
}

// The user has been asked by now, unless the program is being ended from outside: then the last
// changes are still to be kept.
void AutoSave::onClosing()
{
    m_changes.Disconnect();
    m_timer.stop();
    if (m_isAbandoned)
        drop();
    else
        keepAtOnce();
    m_file.clear();
    m_isAbandoned = false;
}

void AutoSave::keepAtOnce()
{
    if (m_isAbandoned)
        return;
    if (m_writer)
        finish();
    keep();
    if (m_writer)
        finish();
}

// The disk of the project may hang, and the program be killed for it, so the latest changes are
// kept first.
void AutoSave::onReplacing(const QString &digest)
{
    if (m_timer.isActive())
        keep();
    if (!m_file.isEmpty())
        Nodes::RecoveryFile::NoteSave(m_file.toStdString(), digest.toStdString());
}

void AutoSave::keep()
{
    if (!m_session.isModified() || m_session.file().isEmpty())
        return;
    if (m_writer) {
        touch(); // of a slow disk: once it is done
        return;
    }
    Nodes::RecoveryInfo info;
    info.project = m_session.file().toStdString();
    if (m_file.isEmpty())
        m_file = QString::fromStdString(
            Nodes::RecoveryFile::FreeName(m_directory.toStdString(), info.project));
    info.file = m_file.toStdString();
    Nodes::RecoveryFile::NoteSave(info.file, {});
    info.name = m_session.name().toStdString();
    info.base = m_base;
    info.saved = Nodes::Clock::Current().Now();
    m_writer = std::make_unique<Nodes::RecoveryWriter>();
    const Nodes::Result started = m_writer->Start(*m_session.project(), info);
    if (!started) {
        finish();
        return;
    }
    m_notifier =
        std::make_unique<QSocketNotifier>(m_writer->GetDescriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &AutoSave::finish);
}

void AutoSave::finish()
{
    if (m_notifier) {
        m_notifier->setEnabled(false);
        m_notifier.release()->deleteLater(); // this may be its own signal
    }
    const Nodes::Result kept = m_writer->Finish();
    m_writer.reset();
    if (kept) {
        m_isFailing = false;
        emit this->kept();
        return;
    }
    touch();
    if (m_isFailing)
        return;
    m_isFailing = true;
    emit failed(tr("Несохранённая работа не защищена от сбоя: копия не записывается (%1). "
                   "Сохраняйте проект чаще.")
                    .arg(QString::fromStdString(kept.GetDetail())));
}

void AutoSave::drop()
{
    m_timer.stop();
    m_notifier.reset();
    m_writer.reset(); // what it has not written is not wanted
    if (!m_file.isEmpty())
        Nodes::RecoveryFile::Remove(m_file.toStdString());
    m_file.clear();
}

} // namespace Editor
