#include "widgets/reports/export/DataExport.h"

#include "widgets/reports/export/CsvSheets.h"
#include "widgets/reports/export/DataExportProgress.h"
#include "widgets/reports/export/XlsxBook.h"

#include <QThread>

#include <algorithm>
#include <iterator>

namespace Widgets {

DataExport::DataExport(QObject *parent) : QObject(parent), m_rowsPerSheet(XlsxBook::mostRows) {}

DataExport::~DataExport()
{
    cancel();
    if (m_thread)
        m_thread->wait();
}

DataExport::Format DataExport::formatOf(const QString &file)
{
    return file.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive) ? Format::Xlsx : Format::Csv;
}

void DataExport::start(const QString &file, Format format, const ExportSheets &given)
{
    if (isRunning())
        return;
    ExportSheets sheets;
    std::copy_if(given.begin(), given.end(), std::back_inserter(sheets),
                 [](const ExportSheet &sheet) { return sheet.rows != nullptr; });
    if (sheets.isEmpty()) {
        m_files.clear();
        emit finished(QStringLiteral("В отчёте нет данных: сохранять нечего."));
        return;
    }
    m_files = format == Format::Csv ? CsvSheets::filesOf(file, sheets) : QStringList(file);
    m_isCancelled = false;
    m_error.clear();
    const auto work = [this, file, format, sheets, files = m_files, rows = m_rowsPerSheet] {
        qint64 count = 0;
        for (const ExportSheet &sheet : sheets)
            count += sheet.rows->rowCount();
        DataExportProgress progress(count, m_isCancelled,
                                    [this](int percent) { emit progressed(percent); });
        m_error = format == Format::Csv ? CsvSheets::write(files, sheets, progress)
                                        : XlsxBook::write(file, sheets, progress, rows);
    };
    m_thread.reset(QThread::create(work));
    m_thread->setObjectName(QStringLiteral("DataExport"));
    connect(m_thread.get(), &QThread::finished, this, &DataExport::onThreadFinished);
    m_thread->start(QThread::LowPriority);
}

void DataExport::cancel()
{
    m_isCancelled = true;
}

void DataExport::onThreadFinished()
{
    m_thread->wait();
    m_thread.reset();
    emit finished(m_error);
}

} // namespace Widgets
