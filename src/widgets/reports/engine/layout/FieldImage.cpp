#include "widgets/reports/engine/layout/FieldImage.h"

#include "widgets/reports/engine/expressions/ReportScope.h"
#include "widgets/reports/engine/template/TemplateItem.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace LimeReport {

namespace {

constexpr qint64 LargestPicture = 16 << 20;

} // namespace

FieldImage::FieldImage(const TemplateItem &item, const QString &directory, const ReportScope &scope)
{
    const QString source = item.text(QStringLiteral("datasource"));
    const QString field = item.text(QStringLiteral("field"));
    const QString file = item.text(QStringLiteral("resourcePath"));
    if (source.isEmpty() && field.isEmpty()) {
        if (file.isEmpty())
            fail(QStringLiteral("в нём нет ни рисунка, ни поля"),
                 QStringLiteral("рисунок не задан"));
        else
            readFile(file, directory);
    } else if (!scope.hasColumn(source, field)) {
        fail(QStringLiteral("нет столбца %1.%2").arg(source, field),
             QStringLiteral("нет столбца %1.%2").arg(source, field));
    } else {
        take(scope.field(source, field), directory);
    }
}

void FieldImage::fail(const QString &error, const QString &told)
{
    m_error = error;
    m_told = told;
}

void FieldImage::take(const QVariant &value, const QString &directory)
{
    if (value.userType() == QMetaType::QImage) {
        QBuffer buffer(&m_bytes);
        value.value<QImage>().save(&buffer, "PNG");
    } else if (value.userType() == QMetaType::QByteArray) {
        m_bytes = value.toByteArray();
    } else if (value.isValid() && !value.toString().isEmpty()) {
        readFile(value.toString(), directory);
    }
    if (m_bytes.size() > LargestPicture) {
        fail(QStringLiteral("рисунок занимает %1 МБ").arg(m_bytes.size() >> 20),
             QStringLiteral("рисунок слишком велик"));
        m_bytes.clear();
    }
}

void FieldImage::readFile(const QString &name, const QString &directory)
{
    const QString root = directory.isEmpty() ? QString() : QDir(directory).canonicalPath();
    const QString file =
        root.isEmpty() ? QString() : QFileInfo(QDir(root).filePath(name)).canonicalFilePath();
    if (file.isEmpty()) {
        fail(QStringLiteral("рисунка «%1» нет в «%2»").arg(name, directory),
             QStringLiteral("нет файла %1").arg(name));
        return;
    }
    if (!file.startsWith(root + QLatin1Char('/'))) {
        fail(QStringLiteral("рисунок «%1» лежит вне «%2» и не читается").arg(name, root),
             QStringLiteral("файл %1 вне каталога шаблона").arg(name));
        return;
    }
    QFile input(file);
    if (!QFileInfo(file).isFile() || input.size() > LargestPicture ||
        !input.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("рисунок «%1» не читается или слишком велик").arg(name),
             QStringLiteral("файл %1 не читается").arg(name));
        return;
    }
    m_bytes = input.readAll();
}

} // namespace LimeReport
