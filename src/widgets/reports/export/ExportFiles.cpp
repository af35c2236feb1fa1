#include "widgets/reports/export/ExportFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace Widgets::ExportFiles {

const QString cancelled = QStringLiteral("Экспорт отменён.");

namespace {

bool sync(const QByteArray &path)
{
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool isDone = ::fsync(file) == 0;
    ::close(file);
    return isDone;
}

} // namespace

QString notWritten(const QString &file, const QString &reason)
{
    return QStringLiteral("Файл «%1» не записан: %2. Проверьте место на диске и права на каталог.")
        .arg(QDir::toNativeSeparators(file), reason);
}

QString refusal(const QString &file)
{
    const QFileInfo info(file);
    return info.exists() && !info.isFile()
               ? notWritten(file, QStringLiteral("под этим именем не файл"))
               : QString();
}

QString replace(const QString &written, const QString &file)
{
    const QByteArray from = QFile::encodeName(written);
    const QByteArray to = QFile::encodeName(file);
    if (!sync(from) || std::rename(from.constData(), to.constData()) != 0)
        return QString::fromLocal8Bit(std::strerror(errno));
    sync(QFile::encodeName(QFileInfo(file).absolutePath()));
    return QString();
}

QString namePart(const QString &name)
{
    QString part;
    for (const QChar c : name)
        part += c.isPrint() && !QStringLiteral("/\\:*?\"<>|").contains(c) ? c : QChar('_');
    return part.left(60).trimmed();
}

} // namespace Widgets::ExportFiles
