#include "editor/project/ProjectSession.h"

#include "editor/project/NewProject.h"
#include "editor/project/ReadProject.h"
#include "editor/project/ResourceCopy.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/project/HexDigest.h"
#include "nodes/serial/AtomicFile.h"
#include "nodes/serial/LoadProgress.h"
#include "nodes/serial/ProjectWriter.h"
#include "nodes/system/systemCore.h"
#include "utils/undo/IUndo.h"
#include "utils/undo/NodeCommand.h"
#include "widgets/context/ProcessContext.h"
#include "widgets/context/UnheardActions.h"

#include <QDir>
#include <QFileInfo>

namespace Editor {

namespace {

const QString projectFile = QStringLiteral("project.xml");

} // namespace

QString ProjectSession::fileOf(const QString &fileOrDirectory)
{
    const QFileInfo info(fileOrDirectory);
    return info.isDir() ? QDir(info.absoluteFilePath()).filePath(projectFile)
                        : info.absoluteFilePath();
}

ProjectSession::ProjectSession(QObject *parent)
    : QObject(parent),
      m_core(std::make_unique<Nodes::systemCore>()),
      m_actions(std::make_unique<Widgets::UnheardActions>()),
      m_context(std::make_unique<Widgets::ProcessContext>(m_core.get(), *m_actions, m_gestures))
{
    m_core->SetWorkMode(Nodes::WorkModeEditing);
    Utils::IUndo::setUndoStack(&m_stack);
    Utils::IUndo::setGate([this] { return admits(); });
    Utils::NodeCommand::setRefusalListener([this](const QString &text, const Nodes::Result &why) {
        emit refused(explain(text.isEmpty() ? tr("Изменение не выполнено") : text, why));
    });
    connect(&m_stack, &QUndoStack::cleanChanged, this, &ProjectSession::tellModified);
    connect(&m_stack, &QUndoStack::indexChanged, this, [this] { ++m_edits; });
    m_runner = [](const DiskJob &job) { return job.run(); };
}

ProjectSession::~ProjectSession()
{
    disconnect(&m_stack, nullptr, this, nullptr);
    m_stack.clear();
    Utils::NodeCommand::setRefusalListener({});
    Utils::IUndo::setGate({});
    Utils::IUndo::setUndoStack(nullptr);
}

Nodes::NodesCollection *ProjectSession::project() const
{
    return m_isOpen ? m_core->GetNodesCollection() : nullptr;
}

Nodes::ConfigNode *ProjectSession::root() const
{
    const Nodes::NodesCollection *open = project();
    return open ? open->GetRoot() : nullptr;
}

QString ProjectSession::directory() const
{
    return m_file.isEmpty() ? QString() : QFileInfo(m_file).absolutePath();
}

QString ProjectSession::name() const
{
    const Nodes::ConfigNode *top = root();
    return top ? QString::fromStdString(top->GetName()) : QString();
}

const Nodes::LoadReport &ProjectSession::report() const
{
    return m_core->GetLoadReport();
}

bool ProjectSession::admits()
{
    if (!isReadOnly())
        return true;
    emit refused(tr("Проект открыт только для чтения: %1").arg(m_readOnlyReason));
    return false;
}

void ProjectSession::setReadOnly(const QString &reason)
{
    if (m_readOnlyReason == reason)
        return;
    m_readOnlyReason = reason;
    emit readOnlyChanged();
}

void ProjectSession::setRecovered()
{
    m_isRecovered = true;
    tellModified();
}

void ProjectSession::tellModified()
{
    if (m_wasModified == isModified())
        return;
    m_wasModified = isModified();
    emit modifiedChanged(m_wasModified);
}

Nodes::Result ProjectSession::open(const QString &fileOrDirectory)
{
    ReadProject found;
    QString file;
    const Nodes::Result done = read(fileOrDirectory, found, &file);
    if (done)
        adopt(std::move(found), file);
    return done;
}

Nodes::Result ProjectSession::read(const QString &fileOrDirectory, ReadProject &found,
                                   QString *file) const
{
    const auto reading = std::make_shared<std::pair<ReadProject, QString>>();
    const auto progress = std::make_shared<Nodes::LoadProgress>();
    const auto done =
        wait({tr("Читается проект «%1»…").arg(QDir::toNativeSeparators(fileOrDirectory)),
              [=] {
                  reading->second = fileOf(fileOrDirectory);
                  return reading->first.read(reading->second, progress.get());
              },
              progress,
              {}});
    if (!done)
        return {Nodes::Result::Cancelled, fileOrDirectory.toStdString() + ": not waited for"};
    found = std::move(reading->first);
    if (file)
        *file = reading->second;
    return *done;
}

std::optional<Nodes::Result> ProjectSession::wait(const DiskJob &job) const
{
    ++m_waits;
    const auto done = m_runner(job);
    --m_waits;
    return done;
}

Nodes::Result ProjectSession::onDisk(const DiskJob &job) const
{
    const auto done = wait(job);
    return done ? *done : Nodes::Result(Nodes::Result::NotAvailable, "not waited for");
}

void ProjectSession::adopt(ReadProject &&read, const QString &file)
{
    adopt(std::move(read.project), file, read.report, read.stamp, read.readOnlyReason);
}

void ProjectSession::adopt(std::unique_ptr<Nodes::NodesCollection> project, const QString &file,
                           const Nodes::LoadReport &report, const Nodes::FileStamp &stamp,
                           const QString &readOnlyReason)
{
    close();
    m_core->SetLoadReport(report);
    m_core->AdoptProject(std::move(project), file.toStdString());
    // Whoever edits a project writes its rights: they do not bind him, and nothing is journalled.
    Nodes::ModelServices services = m_core->GetNodesCollection()->GetServices();
    services.access = nullptr;
    services.journal = nullptr;
    m_core->GetNodesCollection()->SetServices(services);
    m_file = file;
    m_stamp = stamp;
    m_isOpen = true;
    ++m_openings;
    setReadOnly(readOnlyReason);
    emit opened();
}

Nodes::Result ProjectSession::create(const QString &directory, const QString &name)
{
    const QString file = QDir(QFileInfo(directory).absoluteFilePath()).filePath(projectFile);
    if (QFileInfo::exists(file))
        return {Nodes::Result::Duplicate, file.toStdString() + " exists already"};
    if (!QDir().mkpath(directory))
        return {Nodes::Result::StorageError, directory.toStdString() + " cannot be made"};
    std::unique_ptr<Nodes::NodesCollection> project = MakeNewProject(name.toStdString());
    const Nodes::Result written = Nodes::ProjectWriter::WriteFile(*project, file.toStdString());
    if (!written)
        return written;
    return open(file);
}

Nodes::Result ProjectSession::write()
{
    const std::string path = m_file.toStdString();
    std::string text;
    const Nodes::Result made = Nodes::ProjectWriter::MakeText(*project(), path, text);
    if (!made)
        return made;
    const std::string digest = Nodes::HexDigest(text);
    emit replacing(QString::fromStdString(digest));
    m_writing.insert(m_file);
    const auto ended = [this, writing = Writing{m_file, QString::fromStdString(digest), m_openings,
                                                m_edits}](const Nodes::Result &written) {
        endWrite(writing, written);
    };
    const auto written =
        wait({tr("Проект записывается в «%1»…\nЕсли не ждать, он запишется, когда ответит "
                 "диск, а до тех пор считается несохранённым.")
                  .arg(QDir::toNativeSeparators(m_file)),
              [path, text = std::move(text)] { return Nodes::ReplaceFile(path, text); },
              {},
              [this, ended](const Nodes::Result &late) {
                  ended(late);
                  emit savedLate(late);
              }});
    if (!written)
        return {Nodes::Result::NotAvailable, path + ": it is still being written"};
    ended(*written);
    return *written;
}

// The user may have gone on by now, with the same project or another, or have opened it again: what
// was read then may be older than what is in the file now.
void ProjectSession::endWrite(const Writing &writing, const Nodes::Result &written)
{
    m_writing.erase(writing.file);
    if (!written || !m_isOpen || m_openings != writing.opening)
        return;
    m_stamp = Nodes::FileStamp::OfDigest(writing.digest.toStdString());
    if (m_edits == writing.edits) {
        m_isRecovered = false;
        m_stack.setClean();
        tellModified();
    } else {
        m_stack.resetClean(); // what was saved before is in the file no more
    }
    emit saved();
}

Nodes::Result ProjectSession::save()
{
    if (!m_isOpen)
        return {Nodes::Result::NotFound, "no project is open"};
    if (isReadOnly())
        return {Nodes::Result::ReadOnly, m_readOnlyReason.toStdString()};
    if (isWriting())
        return {Nodes::Result::NotAvailable, "an earlier save has not ended yet"};
    Nodes::Result allowed;
    emit aboutToSave(allowed);
    return allowed ? write() : allowed;
}

Nodes::Result ProjectSession::saveAs(const QString &directory)
{
    if (!m_isOpen)
        return {Nodes::Result::NotFound, "no project is open"};
    const QString target = QFileInfo(directory).absoluteFilePath();
    const QString file = QDir(target).filePath(projectFile);
    std::string text;
    const Nodes::Result made = Nodes::ProjectWriter::MakeText(*project(), file.toStdString(), text);
    if (!made)
        return made;
    if (!m_writing.insert(file).second)
        return {Nodes::Result::NotAvailable, "an earlier save has not ended yet"};
    const auto written = wait(
        {tr("Проект записывается в «%1»…").arg(QDir::toNativeSeparators(target)),
         [=, from = this->directory(), text = std::move(text)]() -> Nodes::Result {
             if (QFileInfo::exists(file))
                 return {Nodes::Result::Duplicate, file.toStdString() + " exists already"};
             if (!QDir().mkpath(target))
                 return {Nodes::Result::StorageError, target.toStdString() + " cannot be made"};
             const Nodes::Result copied = CopyResources(from, target);
             return copied ? Nodes::ReplaceFile(file.toStdString(), text) : copied;
         },
         {},
         [this, file](const Nodes::Result &late) {
             m_writing.erase(file);
             emit savedLate(late);
         }});
    if (!written)
        return {Nodes::Result::NotAvailable, file.toStdString() + ": it is still being written"};
    m_writing.erase(file);
    if (!*written)
        return *written;
    ReadProject found; // resources are looked for beside the new file
    const Nodes::Result done = read(file, found);
    if (!done)
        return done;
    abandon(); // it is safe there
    adopt(std::move(found), file);
    return done;
}

void ProjectSession::close()
{
    if (!m_isOpen)
        return;
    emit aboutToClose();
    m_stack.clear();
    m_isOpen = false;
    m_isRecovered = false;
    m_file.clear();
    m_stamp = {};
    setReadOnly({});
    tellModified();
    emit closed();
}

QString ProjectSession::explain(const QString &what, const Nodes::Result &why)
{
    return QStringLiteral("%1: %2").arg(what, QString::fromStdString(why.GetResultTranslated()));
}

} // namespace Editor
