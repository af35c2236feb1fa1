#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/schedule/ReportFolder.h"
#include "widgets/reports/schedule/ReportJob.h"

#include "utils/relay/QueueRelay.h"

#include <QList>
#include <QObject>
#include <QThreadPool>

#include <memory>

namespace LimeReport {
class ReportEngine;
}

namespace Nodes {
class systemCore;
}

namespace Widgets {

class DataExport;
class PrintCommand;
class ReportModelTable;

/// Makes one report into a file, or prints it: finds its place, reads its data and renders it, all
/// of it off the GUI thread. Used once, or again after finished(). GUI thread.
class WIDGETS_EXPORT ReportFiling : public QObject
{
    Q_OBJECT

public:
    explicit ReportFiling(const Nodes::systemCore &core, QObject *parent = nullptr);
    /// Ends what is under way; no half file stays.
    ~ReportFiling() override;

    /// finished() follows.
    void start(const ReportJob &job);
    bool isRunning() const { return m_isRunning; }

signals:
    /// `error` is "" after success, else what is wrong, for operators, and there are no files;
    /// there are none of a printed one either. `faults`: what is missing in the report.
    void finished(const QStringList &files, const QString &error, const QString &faults);

private:
    void onPlaced(const ReportFolder::Place &place);
    bool load();
    void onDataUpdated();
    void write();
    void readData();
    void onSaved(const QString &file, const QString &error);
    void onPrinted(const QString &error);
    void end(const QStringList &files, const QString &error);

    const Nodes::systemCore &m_core;
    QThreadPool m_pool; // outlives the models
    std::unique_ptr<LimeReport::ReportEngine> m_engine;
    DataExport *m_export;
    QList<ReportModelTable *> m_models; // owned by the engine
    PrintCommand *m_print;
    ReportJob m_job;
    QString m_file;
    int m_pending = 0;
    bool m_isRunning = false;
    Utils::QueueRelay<ReportFolder::Place> m_placed;
};

} // namespace Widgets
