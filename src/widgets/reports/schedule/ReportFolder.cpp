#include "widgets/reports/schedule/ReportFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace Widgets {

namespace {

constexpr int mostNames = 1000;

} // namespace

ReportFolder::Place ReportFolder::prepare(const QString &folder, const QString &name,
                                          const QString &ending)
{
    const QString shown = QDir::toNativeSeparators(folder);
    if (!QDir().mkpath(folder))
        return {{},
                QStringLiteral("Папка «%1» не создаётся. Проверьте место на диске и права.")
                    .arg(shown)};
    if (!QFileInfo(folder).isWritable())
        return {{}, QStringLiteral("В папку «%1» нельзя писать. Проверьте права.").arg(shown)};
    const QDir directory(folder);
    for (int number = 1; number < mostNames; ++number) {
        const QString base = number == 1 ? name : QStringLiteral("%1 (%2)").arg(name).arg(number);
        const QString file = directory.filePath(base + QLatin1Char('.') + ending);
        const QStringList parts = directory.entryList({base + QStringLiteral(" - *.") + ending});
        if (!QFileInfo::exists(file) && parts.isEmpty())
            return {file, {}};
    }
    return {{}, QStringLiteral("В папке «%1» слишком много файлов «%2».").arg(shown, name)};
}

ReportFolder::Place ReportFolder::prepareTemporary(const QString &name, const QString &ending)
{
    QTemporaryDir directory(QDir::temp().filePath(QStringLiteral("report-XXXXXX")));
    directory.setAutoRemove(false);
    if (directory.isValid())
        return {directory.filePath(name + QLatin1Char('.') + ending), {}};
    return {{},
            QStringLiteral("В папке «%1» нет места для печати. Освободите место на диске.")
                .arg(QDir::toNativeSeparators(QDir::tempPath()))};
}

void ReportFolder::removeTemporary(const QString &file)
{
    QFile::remove(file);
    QDir().rmdir(QFileInfo(file).path());
}

QStringList ReportFolder::remove(const QStringList &files)
{
    QStringList kept;
    for (const QString &file : files) {
        if (QFileInfo::exists(file) && !QFile::remove(file))
            kept << file;
    }
    return kept;
}

} // namespace Widgets
