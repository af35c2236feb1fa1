#include "utils/settings/SettingsFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>
#include <QLockFile>
#include <QLoggingCategory>
#include <QSaveFile>

namespace Utils {

namespace {

constexpr qint64 maximumSize = 16 * 1024 * 1024; // bytes; a real file has a few thousand
constexpr int lockWait = 200;                    // ms; the GUI thread waits this long at most

Q_LOGGING_CATEGORY(settingsLog, "station.settings")

Nodes::Result failure(Nodes::Result::ResultType type, const QString &path, const QString &reason)
{
    const QString text = QStringLiteral("%1: %2").arg(path, reason);
    qCWarning(settingsLog, "settings file %s", qUtf8Printable(text));
    return Nodes::Result(type, text.toStdString());
}

QString freeName(const QString &path)
{
    QString name = path + QStringLiteral(".damaged");
    for (int number = 2; QFileInfo::exists(name); ++number)
        name = QStringLiteral("%1.damaged-%2").arg(path).arg(number);
    return name;
}

} // namespace

Nodes::Result SettingsFile::setAside(Nodes::Result::ResultType type, const QString &reason) const
{
    const QString kept = freeName(m_path);
    if (!QDir().rename(m_path, kept))
        return failure(Nodes::Result::StorageError, m_path,
                       reason + QStringLiteral("; it cannot be renamed either"));
    return failure(type, m_path, QStringLiteral("%1; it is kept as %2").arg(reason, kept));
}

Nodes::Result SettingsFile::read(QJsonObject &content) const
{
    content = QJsonObject();
    QFile file(m_path);
    if (!file.exists())
        return Nodes::Result();
    if (!QFileInfo(file).isFile())
        return setAside(Nodes::Result::StorageError, QStringLiteral("not a regular file"));
    if (!file.open(QIODevice::ReadOnly))
        return setAside(Nodes::Result::StorageError, file.errorString());
    if (file.size() > maximumSize)
        return setAside(Nodes::Result::ParseError, QStringLiteral("larger than 16 MiB"));
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (error.error != QJsonParseError::NoError)
        return setAside(Nodes::Result::ParseError,
                        QStringLiteral("byte %1: %2").arg(error.offset).arg(error.errorString()));
    if (!document.isObject())
        return setAside(Nodes::Result::ParseError, QStringLiteral("not a JSON object"));
    content = document.object();
    return Nodes::Result();
}

Nodes::Result SettingsFile::write(const QJsonObject &content) const
{
    QSaveFile file(m_path);
    const QByteArray text = QJsonDocument(content).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.flush() ||
        !file.commit())
        return failure(Nodes::Result::StorageError, m_path, file.errorString());
    return Nodes::Result();
}

Nodes::Result SettingsFile::replace(const QString &key, const QJsonValue &value) const
{
    const QString directory = QFileInfo(m_path).absolutePath();
    if (!QDir().mkpath(directory))
        return failure(Nodes::Result::StorageError, directory,
                       QStringLiteral("cannot make the directory"));
    QLockFile lock(m_path + QStringLiteral(".lock"));
    if (!lock.tryLock(lockWait))
        return failure(Nodes::Result::StorageError, m_path,
                       QStringLiteral("in use by another process"));
    QJsonObject content;
    const Nodes::Result previous = read(content);
    if (!previous && QFileInfo::exists(m_path))
        return previous;
    content.insert(key, value);
    return write(content);
}

} // namespace Utils
