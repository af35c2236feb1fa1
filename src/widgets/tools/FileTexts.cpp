#include "widgets/tools/FileTexts.h"

#include "nodes/values/Result.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace Widgets {

namespace {

constexpr int mostNamed = 10; // in one message

} // namespace

QString FileTexts::megabytes(quint64 bytes)
{
    return QLocale(QLocale::Russian).toString(double(bytes) / (1 << 20), 'f', 1) +
           QStringLiteral(" МБ");
}

QString FileTexts::reasonOf(const Nodes::Result &result)
{
    if (result == Nodes::Result::Refused)
        return QStringLiteral("файл используется; остановите того, кто его открыл, и повторите");
    if (result == Nodes::Result::Duplicate)
        return QStringLiteral("файл с таким именем там уже есть; выберите другую папку");
    if (result == Nodes::Result::Failed)
        return QStringLiteral("копия не совпала с оригиналом и удалена; проверьте диск");
    if (result == Nodes::Result::LimitExceeded)
        return QStringLiteral(
            "на диске не хватает места; освободите его или выберите другую папку");
    return QString::fromStdString(result.GetResultTranslated());
}

QString FileTexts::listOf(const QStringList &names)
{
    const QString rest = names.size() > mostNamed
                             ? QStringLiteral("\n… и ещё %1").arg(names.size() - mostNamed)
                             : QString();
    return names.mid(0, mostNamed).join('\n') + rest;
}

QString FileTexts::freePath(const QString &folder, const QString &file, const QStringList &taken)
{
    const QFileInfo info(file);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("-yyyyMMdd-HHmmss"));
    QString path = QDir(folder).filePath(info.fileName());
    for (int number = 1; QFileInfo::exists(path) || taken.contains(path); ++number) {
        const QString more = number == 1 ? QString() : '-' + QString::number(number);
        const QString ending = info.suffix().isEmpty() ? QString() : '.' + info.suffix();
        path = QDir(folder).filePath(info.completeBaseName() + stamp + more + ending);
    }
    return path;
}

} // namespace Widgets
