#include "widgets/reports/engine/template/TemplateReader.h"

#include "widgets/reports/engine/template/TemplateBuilder.h"
#include "widgets/reports/engine/template/TemplateXml.h"

#include <QFile>
#include <QFileInfo>

namespace LimeReport {

namespace {

// Templates have some kilobytes, with pictures some megabytes.
constexpr qint64 LargestFile = 64 << 20;

} // namespace

ReportTemplatePtr TemplateReader::readFile(const QString &file, QString &error)
{
    QFile input(file);
    if (!input.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("%1: %2").arg(file, input.errorString());
        return nullptr;
    }
    if (input.size() > LargestFile) {
        error = QStringLiteral("%1: шаблон занимает %2 МБ, читается не более %3 МБ")
                    .arg(file)
                    .arg(input.size() >> 20)
                    .arg(LargestFile >> 20);
        return nullptr;
    }
    const QFileInfo info(file);
    return read(input.readAll(), info.completeBaseName(), info.absolutePath(), error);
}

ReportTemplatePtr TemplateReader::read(const QByteArray &xml, const QString &name,
                                       const QString &directory, QString &error)
{
    TemplateXml parsed;
    const QVariantMap root = parsed.read(xml);
    if (!parsed.error().isEmpty()) {
        error = QStringLiteral("%1: %2").arg(name, parsed.error());
        return nullptr;
    }
    auto made = std::make_shared<ReportTemplate>();
    made->name = name;
    made->directory = directory;
    made->problems = parsed.problems();
    TemplateBuilder builder(*made);
    if (!builder.build(root)) {
        error = QStringLiteral("%1: %2").arg(name, builder.error());
        return nullptr;
    }
    return made;
}

} // namespace LimeReport
