#include "editor/project/WriteObstacle.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
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
    if (disk.isValid() && disk.bytesAvailable() < bytes)
        return tr("На диске нет места: нужно %1, свободно %2. Освободите место и сохраните ещё "
                  "раз.")
            .arg(QLocale().formattedDataSize(bytes),
                 QLocale().formattedDataSize(disk.bytesAvailable()));
    return {};
}

} // namespace Editor
