#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/export/ExportSheet.h"

#include <QObject>
#include <QStringList>

#include <atomic>
#include <memory>

class QThread;

namespace Widgets {

/// Writes data sources of a report to a file, on a thread of its own: all rows, typed, with their
/// quality. The file appears under its name when all of it is written. GUI thread.
class WIDGETS_EXPORT DataExport : public QObject
{
    Q_OBJECT

public:
    enum class Format { Csv, Xlsx };

    explicit DataExport(QObject *parent = nullptr);
    /// Cancels, and waits for the row under way.
    ~DataExport() override;

    /// Nothing happens while one is under way.
    void start(const QString &file, Format format, const ExportSheets &sheets);
    /// finished() follows; no file stays.
    void cancel();
    bool isRunning() const { return m_thread != nullptr; }
    /// Those of the export under way, or of the last one: several for a CSV of several sources.
    const QStringList &files() const { return m_files; }
    /// For spreadsheets; beyond, rows go on in further sheets.
    void setRowsPerSheet(int rows) { m_rowsPerSheet = rows; }

    /// By the end of a file's name; CSV for any other.
    static Format formatOf(const QString &file);

signals:
    /// 1 to 100.
    void progressed(int percent);
    /// "" after success, else an error for operators.
    void finished(const QString &error);

private:
    void onThreadFinished();

    QStringList m_files;
    int m_rowsPerSheet;
    std::atomic<bool> m_isCancelled{false};
    QString m_error; // of the thread, read when that has ended
    std::unique_ptr<QThread> m_thread;
};

} // namespace Widgets
