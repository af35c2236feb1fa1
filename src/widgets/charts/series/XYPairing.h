#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/series/SeriePoint.h"

#include <limits>
#include <vector>

namespace Widgets {

/// Makes points of two signals: each sample of either with the one of the other that is nearest in
/// time, if that is near enough, of two equally near the earlier one. The points are in the order
/// of their times, each pair of samples once. What comes costs what it changes: points older than
/// twice the tolerance before it stay as they are. One thread.
class WIDGETS_EXPORT XYPairing
{
public:
    struct Pair
    {
        double time; ///< of the later of the two samples
        double x;    ///< NaN, with y, where one of the two is a gap
        double y;
        Nodes::Quality quality; ///< the worse one
    };

    /// Milliseconds; a change takes effect on all pairs.
    void setTolerance(double milliseconds);

    void addX(const SeriePoint &sample) { add(m_x, sample); }
    void addY(const SeriePoint &sample) { add(m_y, sample); }
    void addX(const std::vector<SeriePoint> &samples) { add(m_x, samples); }
    void addY(const std::vector<SeriePoint> &samples) { add(m_y, samples); }
    /// Forgets what is older.
    void trimLeft(double time);
    void clear();

    const std::vector<Pair> &pairs();
    /// Time of the newest sample of either; 0 without any.
    double lastTime() const;

private:
    using Samples = std::vector<SeriePoint>;
    struct Match
    {
        std::size_t x;
        std::size_t y;
    };

    void add(Samples &samples, const SeriePoint &sample);
    void add(Samples &samples, const Samples &added);
    void match(const Samples &samples, const Samples &others, double from, bool isX,
               std::vector<Match> &found) const;
    double timeOf(const Match &match) const;
    Pair pairOf(const Match &match) const;

    Samples m_x;
    Samples m_y;
    std::vector<Pair> m_pairs;
    double m_tolerance = 1000;
    double m_changedFrom = std::numeric_limits<double>::infinity(); // time of the oldest new sample
};

} // namespace Widgets
