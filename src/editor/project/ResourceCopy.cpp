#include "editor/project/ResourceCopy.h"

#include "nodes/project/HexDigest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

namespace Editor {

namespace {

bool isLeftBehind(const QString &path)
{
    static const QStringList own{QStringLiteral("project.xml"), QStringLiteral("project.xml.bak"),
                                 QStringLiteral("project.xml.lock")};
    if (path.startsWith(own.first()) && path.endsWith(QLatin1String(".saving")))
        return true;
    return own.contains(path) || path.startsWith(QLatin1String("data/"));
}

bool isSame(const QString &left, const QString &right)
{
    const QFileInfo first(left);
    const QFileInfo second(right);
    return first.isFile() && second.isFile() && first.size() == second.size() &&
           Nodes::HexDigestOfFile(left.toStdString()) ==
               Nodes::HexDigestOfFile(right.toStdString());
}

/// Of what is to be copied, from the directory.
QStringList resourcesOf(const QDir &source, const QString &to)
{
    // A target inside the source would be copied into itself.
    const QString own = source.relativeFilePath(to) + QLatin1Char('/');
    const QString inside = source.canonicalPath() + QLatin1Char('/');
    QStringList paths;
    QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = source.relativeFilePath(files.next());
        // Nothing of outside is a resource, whatever leads there.
        const bool isInside = files.fileInfo().canonicalFilePath().startsWith(inside);
        if (isInside && !isLeftBehind(path) && !path.startsWith(own))
            paths << path;
    }
    return paths;
}

} // namespace

Nodes::Result CopyResources(const QString &from, const QString &to)
{
    const QDir source(from);
    const QDir target(to);
    const QStringList paths = resourcesOf(source, to);
    // The project would show another picture there than here: told before anything is copied.
    for (const QString &path : paths) {
        const QString copy = target.filePath(path);
        if (target.exists(path) && !isSame(source.filePath(path), copy))
            return {Nodes::Result::Duplicate, copy.toStdString() + " is another file"};
    }
    for (const QString &path : paths) {
        const QString copy = target.filePath(path);
        if (target.exists(path))
            continue;
        if (!QDir().mkpath(QFileInfo(copy).path()) || !QFile::copy(source.filePath(path), copy))
            return {Nodes::Result::StorageError, path.toStdString() + " cannot be copied"};
    }
    return {};
}

} // namespace Editor
