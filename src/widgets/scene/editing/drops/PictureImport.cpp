#include "widgets/scene/editing/drops/PictureImport.h"

#include "widgets/elements/pictures/PictureDecoder.h"
#include "widgets/elements/symbols/SymbolCheck.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
#include <QSaveFile>
#include <QUrl>

namespace Widgets {

namespace {

/// What kind of picture it is; a refusal for none.
PictureImport::Imported judge(const QByteArray &bytes)
{
    PictureImport::Imported result;
    const QImage picture = PictureDecoder::decode(bytes);
    if (picture.isNull())
        result.refusal = QStringLiteral("это не рисунок, он повреждён или больше 40 миллионов "
                                        "точек. Выберите файл PNG, JPEG, GIF, BMP или SVG.");
    else if (!PictureDecoder::isVector(bytes))
        result.size = picture.size();
    else
        result.isSymbol = SymbolCheck::refusal(bytes).isEmpty();
    return result;
}

bool holds(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.size() == bytes.size() && file.open(QIODevice::ReadOnly) && file.readAll() == bytes;
}

/// Path below `folder` that is free or has that content already.
QString placeFor(const QDir &folder, const QFileInfo &file, const QByteArray &bytes)
{
    QString path = folder.filePath(file.fileName());
    for (int number = 2; QFileInfo::exists(path) && !holds(path, bytes); ++number)
        path = folder.filePath(
            QStringLiteral("%1-%2.%3")
                .arg(file.completeBaseName(), QString::number(number), file.suffix()));
    return path;
}

bool save(const QString &path, const QByteArray &bytes)
{
    if (QFileInfo::exists(path))
        return true;
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

QString pathWithin(const QString &directory, const QString &file)
{
    const QString root = QFileInfo(directory).canonicalFilePath();
    const QString path = QFileInfo(file).canonicalFilePath();
    return !root.isEmpty() && path.startsWith(root + '/') ? path.mid(root.size() + 1) : QString();
}

} // namespace

QStringList PictureImport::filesOf(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile())
            files << url.toLocalFile();
    }
    return files;
}

PictureImport::Imported PictureImport::take(const QString &file, const QString &projectDirectory)
{
    const QFileInfo info(file);
    const auto refuse = [&info](const QString &why) {
        Imported refused;
        refused.refusal = QStringLiteral("Файл «%1»: %2").arg(info.fileName(), why);
        return refused;
    };
    QFile source(file);
    if (projectDirectory.isEmpty())
        return refuse(
            QStringLiteral("проект ещё не сохранён, рисунок некуда скопировать. Сохраните "
                           "проект и перетащите файл снова."));
    if (info.size() > MaximumBytes)
        return refuse(QStringLiteral("больше 50 МБ. Уменьшите рисунок."));
    if (!info.isFile() || !source.open(QIODevice::ReadOnly))
        return refuse(QStringLiteral("не читается. Проверьте права на чтение."));
    const QByteArray bytes = source.readAll();
    Imported result = judge(bytes);
    if (!result.refusal.isEmpty())
        return refuse(result.refusal);
    result.name = info.completeBaseName();
    result.file = pathWithin(projectDirectory, file);
    if (!result.file.isEmpty())
        return result;
    const QDir project(projectDirectory);
    const QString path = placeFor(QDir(project.filePath(QLatin1String(Folder))), info, bytes);
    if (!project.mkpath(QLatin1String(Folder)) || !save(path, bytes))
        return refuse(QStringLiteral("не скопирован в каталог проекта. Проверьте место на диске и "
                                     "права на запись."));
    result.file = project.relativeFilePath(path);
    return result;
}

} // namespace Widgets
