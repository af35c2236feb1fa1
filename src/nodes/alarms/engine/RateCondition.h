#pragma once

#include "nodes/NodesExport.h"
#include "nodes/alarms/engine/ThresholdCondition.h"

#include <deque>

namespace Nodes {

/// Judges how fast a number changes: the mean rate over a window that ends now, the number holding
/// between two values. The times are those of arrival on a clock that nobody sets.
class NODES_EXPORT RateCondition : public ThresholdCondition
{
public:
    enum class Direction { Both, Rising, Falling };
    struct Rate
    {
        Direction direction = Direction::Both;
        Timestamp window = 0; ///< microseconds, above 0
        Timestamp per = 0;    ///< unit of time of the limit, microseconds
    };

    RateCondition(const AlarmThreshold &threshold, const Rate &rate)
        : ThresholdCondition(threshold), m_rate(rate)
    {
    }

    std::unique_ptr<AlarmCondition> Clone() const override
    {
        return std::make_unique<RateCondition>(*this);
    }
    AlarmVerdict Judge(const AlarmInput &input) override;
    Timestamp NextLook() const override;

private:
    struct Sample
    {
        Timestamp time;
        double number;
    };

    void keep(const Sample &sample);

    Rate m_rate;
    // The first is what held when the window began, once they fill it.
    std::deque<Sample> m_samples;
    Timestamp m_judged = 0; // steady time of the last judgement
};

} // namespace Nodes
