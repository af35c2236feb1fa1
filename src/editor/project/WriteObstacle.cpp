#include "editor/project/WriteObstacle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStorageInfo>

namespace Editor {

QString WriteObstacle(const QString &file, qint64 bytes)
{
    const auto tr = [](const char *text) {
        return QCoreApplication::translate("Editor::WriteObstacle", text);
    };
    const QFileInfo directory(QFileInfo(file).absolutePath());
    const QString shown = QDir::toNativeSeparators(directory.filePath());
    if (!directory.exists())
        return tr("Каталога «%1» больше нет. Верните его или сохраните проект в другой.")
            .arg(shown);
    const QStorageInfo disk(directory.filePath());
    if (disk.isReadOnly())
        return tr("Диск с каталогом «%1» подключён только для чтения.").arg(shown);
    if (!directory.isWritable())
        return tr("Нет прав на запись в каталог «%1». Получите их у администратора.").arg(shown);
    constexpr qint64 unit = 1024;
    if (disk.isValid() && disk.bytesAvailable() < bytes)
        return tr("На диске нет места: нужно %L1 КБ, свободно %L2 КБ. Освободите место и сохраните "
                  "ещё раз.")
            .arg(bytes / unit + 1)
            .arg(disk.bytesAvailable() / unit);
    return {};
}

} // namespace Editor
