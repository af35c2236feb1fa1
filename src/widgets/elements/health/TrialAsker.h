#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/health/WorkerJob.h"

#include "nodes/alarms/AlarmTuning.h"
#include "nodes/alarms/trial/AlarmTrials.h"
#include "nodes/model/links/NodeLink.h"

#include <memory>
#include <vector>

namespace Widgets {

/// What "what if" found out. Plain value.
struct TrialAnswer
{
    Nodes::Result result;
    Nodes::AlarmTrials::Outcome outcome; ///< figures of each of the settings
    Nodes::Result journalResult;
    Nodes::AlarmFigures journal; ///< what the alarm did
};

/// Tries settings of an alarm on its archived samples, and reads what the journal has of it, on a
/// thread of its own. Asking again replaces what was asked before. GUI thread.
class WIDGETS_EXPORT TrialAsker : public QObject
{
    Q_OBJECT

public:
    using AnswerPtr = std::shared_ptr<const TrialAnswer>;

    explicit TrialAsker(QObject *parent = nullptr);

    /// Of that many days up to the present. A failure is answered at once: nothing runs then.
    [[nodiscard]] Nodes::Result ask(const Nodes::NodeLink &alarm, int days,
                                    const std::vector<Nodes::AlarmTuning> &settings);
    void cancel() { m_job.cancel(); }
    bool isBusy() const { return m_job.isBusy(); }

signals:
    /// 0 to 100.
    void progressed(int percent);
    void answered(const Widgets::TrialAsker::AnswerPtr &answer);

private:
    WorkerJob m_job;
};

} // namespace Widgets
