#include "widgets/reports/export/CsvSheets.h"

#include "widgets/reports/export/DataExportProgress.h"
#include "widgets/reports/export/ExportColumns.h"
#include "widgets/reports/export/ExportFiles.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

#include <memory>
#include <vector>

namespace Widgets::CsvSheets {

namespace {

constexpr int pieceBytes = 1 << 16;

QByteArray textCell(QString text)
{
    if (!text.isEmpty() && QStringLiteral("=+-@\t\r").contains(text.at(0)))
        text.prepend('\'');
    const bool isQuoted = text.contains(';') || text.contains('"') || text.contains('\n') ||
                          text.contains('\r') || text.startsWith(' ') || text.endsWith(' ');
    return isQuoted ? '"' + text.replace('"', QLatin1String("\"\"")).toUtf8() + '"' : text.toUtf8();
}

QByteArray timeCell(const QDateTime &time)
{
    return time.isValid()
               ? time.toOffsetFromUtc(time.offsetFromUtc()).toString(Qt::ISODateWithMs).toLatin1()
               : QByteArray();
}

QByteArray cellOf(const QVariant &value)
{
    switch (int(value.type())) {
    case QMetaType::UnknownType:
        return QByteArray();
    case QMetaType::Bool:
        return value.toBool() ? "1" : "0";
    case QMetaType::Float:
    case QMetaType::Double:
        return QByteArray::number(value.toDouble(), 'g', QLocale::FloatingPointShortest);
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
        return value.toByteArray();
    case QMetaType::QDateTime:
        return timeCell(value.toDateTime());
    default:
        return textCell(value.toString());
    }
}

QString writeSheet(QSaveFile &file, const LimeReport::SharedRows &rows,
                   DataExportProgress &progress)
{
    const ExportColumns columns(rows);
    QByteArray text = "\xef\xbb\xbf";
    for (int column = 0; column < columns.count(); ++column)
        text += (column > 0 ? ";" : "") + textCell(columns.header(column));
    text += "\r\n";
    const int count = rows.rowCount();
    for (int row = 0; row < count; ++row) {
        for (int column = 0; column < columns.count(); ++column)
            text += (column > 0 ? ";" : "") + cellOf(columns.cell(row, column));
        text += "\r\n";
        if (text.size() > pieceBytes) {
            if (file.write(text) != text.size())
                return ExportFiles::notWritten(file.fileName(), file.errorString());
            text.clear();
        }
        if (!progress.rowDone())
            return ExportFiles::cancelled;
    }
    const bool isWritten = file.write(text) == text.size() && file.flush();
    return isWritten ? QString() : ExportFiles::notWritten(file.fileName(), file.errorString());
}

} // namespace

QStringList filesOf(const QString &file, const ExportSheets &sheets)
{
    if (sheets.size() < 2)
        return {file};
    const QFileInfo info(file);
    const QString suffix = info.suffix().isEmpty() ? QStringLiteral("csv") : info.suffix();
    QStringList files;
    for (const ExportSheet &sheet : sheets) {
        const QString name = info.completeBaseName() + " - " + ExportFiles::namePart(sheet.name);
        QString path = info.dir().filePath(name + '.' + suffix);
        for (int number = 2; files.contains(path); ++number)
            path =
                info.dir().filePath(QStringLiteral("%1 (%2).%3").arg(name).arg(number).arg(suffix));
        files.append(path);
    }
    return files;
}

QString write(const QStringList &files, const ExportSheets &sheets, DataExportProgress &progress)
{
    std::vector<std::unique_ptr<QSaveFile>> written;
    for (const QString &file : files)
        if (!ExportFiles::refusal(file).isEmpty())
            return ExportFiles::refusal(file);
    for (int i = 0; i < sheets.size(); ++i) {
        written.push_back(std::make_unique<QSaveFile>(files.at(i)));
        QSaveFile &file = *written.back();
        if (!file.open(QIODevice::WriteOnly))
            return ExportFiles::notWritten(files.at(i), file.errorString());
        const QString error = writeSheet(file, *sheets.at(i).rows, progress);
        if (!error.isEmpty())
            return error; // a file that isn't committed leaves nothing
    }
    for (const auto &file : written)
        if (!file->commit())
            return ExportFiles::notWritten(file->fileName(), file->errorString());
    return QString();
}

} // namespace Widgets::CsvSheets
