#include "utils/files/ResourceFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Utils {

namespace {

using Outcome = ResourceFiles::Outcome;

Outcome failed(const QString &error)
{
    Outcome outcome;
    outcome.error = error;
    return outcome;
}

// Compared by blocks: neither file need fit into the memory.
bool hasSameBytes(const QString &left, const QString &right)
{
    QFile one(left);
    QFile other(right);
    if (one.size() != other.size() || !one.open(QIODevice::ReadOnly) ||
        !other.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 block = 1 << 20;
    while (!one.atEnd()) {
        if (one.read(block) != other.read(block))
            return false;
    }
    return true;
}

QString numbered(const QFileInfo &file, int number)
{
    const QString name = number < 2
                             ? file.completeBaseName()
                             : QStringLiteral("%1-%2").arg(file.completeBaseName()).arg(number);
    return file.suffix().isEmpty() ? name : name + QLatin1Char('.') + file.suffix();
}

bool isInside(const QString &relative)
{
    return !relative.isEmpty() && !relative.startsWith(QLatin1String("..")) &&
           !QDir::isAbsolutePath(relative);
}

} // namespace

QString ResourceFiles::folderFor(const QString &path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("wav"))
        return QStringLiteral("sounds");
    const QStringList pictures{QStringLiteral("svg"), QStringLiteral("png"),
                               QStringLiteral("jpg"), QStringLiteral("jpeg"),
                               QStringLiteral("gif"), QStringLiteral("bmp")};
    if (pictures.contains(suffix))
        return QStringLiteral("images");
    return suffix == QLatin1String("lrxml") ? QStringLiteral("reports") : QStringLiteral("files");
}

Outcome ResourceFiles::find(const QString &path) const
{
    const QFileInfo file(path);
    if (m_directory.isEmpty())
        return failed(QStringLiteral("У проекта ещё нет папки. Сохраните проект и повторите."));
    if (!file.isFile() || !file.isReadable())
        return failed(
            QStringLiteral("Файл «%1» не найден или не читается. Выберите другой.").arg(path));
    if (file.size() > MaximumSize)
        return failed(
            QStringLiteral("Файл «%1» занимает %2 МБ, допустимо не более 50 МБ. Уменьшите "
                           "его или выберите другой.")
                .arg(file.fileName())
                .arg(file.size() / (1024 * 1024)));
    const QDir directory(m_directory);
    const QString relative = directory.relativeFilePath(file.absoluteFilePath());
    Outcome outcome;
    if (!isInside(relative)) {
        outcome.isForeign = true;
        return outcome;
    }
    const QString real = QDir(directory.canonicalPath()).relativeFilePath(file.canonicalFilePath());
    if (!isInside(real))
        return failed(QStringLiteral("Символическая ссылка «%1» ведёт за пределы папки проекта. "
                                     "Скопируйте в проект сам файл.")
                          .arg(relative));
    outcome.name = relative;
    return outcome;
}

Outcome ResourceFiles::bringIn(const QString &path, const QString &folder) const
{
    Outcome outcome = find(path);
    if (!outcome.isForeign)
        return outcome;
    const QDir directory(m_directory);
    const QFileInfo into(directory.filePath(folder));
    if ((into.exists() || into.isSymLink()) &&
        QDir(directory.canonicalPath()).relativeFilePath(into.canonicalFilePath()) != folder)
        return failed(QStringLiteral("Папка «%1» ведёт за пределы папки проекта.").arg(folder));
    if (!directory.mkpath(folder))
        return failed(
            QStringLiteral("Папку «%1» проекта не удалось создать. Проверьте права.").arg(folder));
    for (int number = 1;; ++number) {
        const QString name = folder + QLatin1Char('/') + numbered(QFileInfo(path), number);
        const QString target = directory.filePath(name);
        const QFileInfo known(target);
        const bool isTaken = known.exists() || known.isSymLink();
        if (isTaken && (known.isSymLink() || !hasSameBytes(path, target)))
            continue;
        if (!isTaken && !QFile::copy(path, target))
            return failed(QStringLiteral("Файл не удалось скопировать в «%1». Проверьте права и "
                                         "свободное место.")
                              .arg(name));
        outcome.name = name;
        outcome.isForeign = false;
        return outcome;
    }
}

} // namespace Utils
