#include "editor/project/ResourceCopy.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace Editor {

namespace {

bool isLeftBehind(const QString &path)
{
    static const QStringList own{QStringLiteral("project.xml"), QStringLiteral("project.xml.bak"),
                                 QStringLiteral("project.xml.lock")};
    return own.contains(path) || path.startsWith(QLatin1String("data/"));
}

} // namespace

Nodes::Result CopyResources(const QString &from, const QString &to)
{
    const QDir source(from);
    const QDir target(to);
    // A target inside the source would be copied into itself.
    const QString own = source.relativeFilePath(to) + QLatin1Char('/');
    const QString inside = source.canonicalPath() + QLatin1Char('/');
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = source.relativeFilePath(files.next());
        // Nothing of outside is a resource, whatever leads there.
        if (!files.fileInfo().canonicalFilePath().startsWith(inside))
            continue;
        if (isLeftBehind(path) || path.startsWith(own) || target.exists(path))
            continue;
        const QString copy = target.filePath(path);
        if (!QDir().mkpath(QFileInfo(copy).path()) || !QFile::copy(files.filePath(), copy))
            return {Nodes::Result::StorageError, path.toStdString() + " cannot be copied"};
    }
    return {};
}

} // namespace Editor
