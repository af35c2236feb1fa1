#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/statistics/SpanStatistics.h"

#include "nodes/model/links/NodeLink.h"
#include "nodes/values/Timestamp.h"

#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace Nodes {
struct HistoryAnswer;
class systemCore;
} // namespace Nodes

namespace Widgets {

class HistoryAsker;

/// Adds up spans of which an archive holds too many samples for one answer, sample by sample: one
/// signal after the other, piece by piece, behind whatever else is asked. GUI thread.
class WIDGETS_EXPORT SpanReader : public QObject
{
    Q_OBJECT

public:
    /// A span of a signal.
    struct Task
    {
        int row;
        Nodes::NodeLink signal;
        SpanIntegrator::Join join;
        double heldUntil;    ///< X value until which the newest sample holds; NaN: it does not
        std::size_t samples; ///< about as many are expected
    };

    explicit SpanReader(QObject *parent);

    /// Instead of what it reads. `from` < `to`: X values of a plot. The model outlives the reading.
    void read(Nodes::systemCore *model, std::vector<Task> tasks, double from, double to);
    void cancel();

signals:
    void completed(int row, const Widgets::SpanStatistics &statistics);

private:
    void begin();
    void askNext();
    void onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer);

    HistoryAsker *m_asker;
    Nodes::systemCore *m_model = nullptr;
    std::vector<Task> m_tasks; // the last one is read
    double m_from = 0;
    double m_to = 0;
    std::optional<SpanIntegrator> m_sums;
    Nodes::Timestamp m_next = 0;  // begin of what is asked next
    Nodes::Timestamp m_piece = 0; // microseconds
    Nodes::Timestamp m_end = 0;
    Nodes::Timestamp m_last = 0; // time of the sample added last
};

} // namespace Widgets
