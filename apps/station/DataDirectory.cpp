#include "apps/station/DataDirectory.h"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace Station {

namespace {

Nodes::Result failure(Nodes::Result::ResultType type, const QString &text)
{
    return {type, text.toStdString()};
}

QString holderOf(const QLockFile &lock)
{
    qint64 process = 0;
    QString host, program;
    if (!lock.getLockInfo(&process, &host, &program))
        return QStringLiteral("another process");
    return QStringLiteral("process %1 (%2) on %3").arg(process).arg(program, host);
}

} // namespace

QString fileNameFrom(const QString &name)
{
    QString result = name;
    for (QChar &character : result) {
        if (!character.isLetterOrNumber() && character != '-' && character != '_')
            character = '_';
    }
    return result.isEmpty() ? QStringLiteral("unnamed") : result;
}

DataDirectory::DataDirectory() = default;
DataDirectory::~DataDirectory() = default;

QString DataDirectory::defaultPath(const QString &projectName)
{
    const QDir base(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    return base.filePath(QStringLiteral("operator-station/") + fileNameFrom(projectName));
}

Nodes::Result DataDirectory::open(const QString &path)
{
    m_path = QDir(path).absolutePath();
    if (!QDir().mkpath(m_path))
        return failure(Nodes::Result::StorageError,
                       QStringLiteral("cannot create the data directory \"%1\"; name another one "
                                      "with --data")
                           .arg(m_path));
    m_lock = std::make_unique<QLockFile>(QDir(m_path).filePath(QStringLiteral("station.lock")));
    m_lock->setStaleLockTime(0); // held for as long as its process lives
    if (m_lock->tryLock())
        return {};
    if (m_lock->error() == QLockFile::LockFailedError)
        return failure(Nodes::Result::Refused,
                       QStringLiteral("the data directory \"%1\" is used by %2; close that station "
                                      "or name another directory with --data")
                           .arg(m_path, holderOf(*m_lock)));
    return failure(Nodes::Result::StorageError,
                   QStringLiteral("cannot write to the data directory \"%1\"; check its rights or "
                                  "name another one with --data")
                       .arg(m_path));
}

Nodes::Result DataDirectory::openTemporary()
{
    m_temporary = std::make_unique<QTemporaryDir>();
    if (!m_temporary->isValid())
        return failure(Nodes::Result::StorageError,
                       QStringLiteral("cannot create a temporary directory: %1")
                           .arg(m_temporary->errorString()));
    return open(m_temporary->path());
}

} // namespace Station
