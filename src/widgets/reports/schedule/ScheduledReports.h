#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/schedule/ReportLedger.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/reports/time/ReportPeriod.h"

#include <QMap>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

namespace Nodes {
class reportSchedule;
class systemCore;
} // namespace Nodes

namespace Widgets {

class ReportFiling;

/// Makes the reports of the station's schedules into files as they fall due, one at a time, and
/// tells the journal. A report that cannot be made is tried again until it can; those that fell due
/// while the station was down are made up. A station that meets a schedule for the first time
/// begins with the period that is under way. GUI thread; files are dealt with off it.
class WIDGETS_EXPORT ScheduledReports : public QObject
{
    Q_OBJECT

public:
    /// Looks every few seconds whether something is due. The core outlives this.
    explicit ScheduledReports(Nodes::systemCore &core, QObject *parent = nullptr);
    /// What is under way is made at the next start.
    ~ScheduledReports() override;

    /// Looks now, at the installed Clock.
    void check();
    bool isBusy() const;

signals:
    /// A report was made or failed; what came of it is in the journal.
    void finished();

private:
    struct Trouble
    {
        int failures = 0;
        Nodes::Timestamp retryAt = 0;
        QString error; ///< that was told last
    };

    bool startDue(Nodes::reportSchedule &schedule, Nodes::Timestamp now);
    void tellSkipped(const Nodes::reportSchedule &schedule, int skipped) const;
    void tellClock(const Nodes::reportSchedule &schedule) const;
    void onFinished(const QStringList &files, const QString &error, const QString &faults);
    void onMade(const Nodes::reportSchedule &schedule, const QStringList &files,
                const QString &faults);
    void onFailed(const Nodes::reportSchedule &schedule, const QString &error);
    QString titleOf(const Nodes::reportSchedule &schedule) const;

    Nodes::systemCore &m_core;
    ReportLedger m_ledger;
    ReportFiling *m_filing;
    QTimer m_ticks;
    Nodes::NodeLink m_schedule; // that is worked on
    Nodes::ReportSpan m_span;
    QMap<unsigned long, Trouble> m_troubles; // by schedule
    QThreadPool m_cleaning;
};

} // namespace Widgets
