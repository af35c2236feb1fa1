#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/WorkerJob.h"

#include "nodes/alarms/statistics/AlarmStatisticsReading.h"

#include <QMetaType>

#include <memory>

namespace Nodes {
class systemCore;
}

using AlarmFiguresPtr = std::shared_ptr<const Nodes::AlarmFigures>;
Q_DECLARE_METATYPE(AlarmFiguresPtr)

namespace Widgets {

/// Computes how the alarms of a period were, on a thread of its own; asking again replaces what was
/// asked before. A member of the asker. GUI thread.
class WIDGETS_EXPORT HealthAsker : public QObject
{
    Q_OBJECT

public:
    explicit HealthAsker(QObject *parent = nullptr);

    /// Fills in which alarms are up now. The core outlives this object.
    void ask(Nodes::systemCore &core, Nodes::AlarmStatisticsReading reading);
    /// What was asked is not answered.
    void cancel() { m_job.cancel(); }
    bool isBusy() const { return m_job.isBusy(); }

signals:
    /// 0 to 100.
    void progressed(int percent);
    /// `figures` is null after a failure.
    void answered(Nodes::Result result, AlarmFiguresPtr figures);

private:
    WorkerJob m_job;
};

} // namespace Widgets
