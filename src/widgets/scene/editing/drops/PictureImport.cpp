#include "widgets/scene/editing/drops/PictureImport.h"

#include "widgets/elements/pictures/PictureDecoder.h"
#include "widgets/elements/symbols/SymbolCheck.h"

#include "utils/files/ResourceFiles.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMimeData>
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
    const auto refuse = [](const QString &why) {
        Imported refused;
        refused.refusal = why;
        return refused;
    };
    const Utils::ResourceFiles project(projectDirectory);
    Utils::ResourceFiles::Outcome found = project.find(file);
    if (!found.error.isEmpty())
        return refuse(found.error);
    const QFileInfo info(file);
    QFile source(file);
    const QByteArray bytes = source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    Imported result = judge(bytes);
    if (!result.refusal.isEmpty())
        return refuse(QStringLiteral("Файл «%1»: %2").arg(info.fileName(), result.refusal));
    if (found.isForeign)
        found = project.bringIn(file, QLatin1String(Folder));
    if (!found.error.isEmpty())
        return refuse(found.error);
    result.name = info.completeBaseName();
    result.file = found.name;
    return result;
}

} // namespace Widgets
