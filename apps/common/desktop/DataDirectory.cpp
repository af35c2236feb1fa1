#include "apps/common/desktop/DataDirectory.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <unistd.h>

namespace Host {

namespace {

Nodes::Result failure(Nodes::Result::ResultType type, const QString &text)
{
    return {type, text.toStdString()};
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
    return m_hold.take(QFile::encodeName(m_path).toStdString());
}

std::vector<std::string> DataDirectory::fallbacks(const std::string &base) const
{
    const QByteArray path = QFile::encodeName(m_path);
    const QByteArray name = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex();
    const std::string own =
        "/operator-station-" + std::to_string(::geteuid()) + "/" + name.left(16).toStdString();
    if (!base.empty())
        return {base + own};
    return {"/var/tmp" + own, "/dev/shm" + own};
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

} // namespace Host
