#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/series/SeriePoint.h"

#include <map>
#include <vector>

namespace Nodes {
class SignalHistoryResponse;
}

namespace Widgets {

/// A place of a tube; NaN where nothing is known.
struct TubeSample
{
    double x;
    double lower;
    double middle;
    double upper;
    Nodes::Quality quality;
};

/// What a signal did within slices of time: lowest, highest, mean. One thread.
class WIDGETS_EXPORT CorridorSlices
{
public:
    /// Milliseconds, at least 1; what is held is forgotten when it changes.
    void setWidth(double milliseconds);
    double width() const { return m_width; }

    void add(const SeriePoint &point);
    /// Samples of that signal. Aggregates longer than a slice are slices of their own length.
    void add(const std::vector<Nodes::SignalHistoryResponse> &answer, unsigned long signal);
    /// Longest slice that is held; the width when there is none longer.
    double longest() const;
    void trimLeft(double x);
    void clear();

    /// In the order of time, each in the middle of its slice, the newest one where its last sample
    /// is.
    std::vector<TubeSample> samples() const;

private:
    struct Slice
    {
        double end;
        double last; // x of its last sample
        double lower;
        double upper;
        double sum;
        double weight; // samples
        Nodes::Quality quality;
    };

    Slice &at(double x, double end);
    static void fold(Slice &slice, const SeriePoint &point, double lower, double upper,
                     double weight);

    double m_width = 60000;
    std::map<double, Slice> m_slices; // by begin
};

/// Two edges that are signals themselves: the tube at each of their samples, the other edge being
/// what it was last. One thread.
class WIDGETS_EXPORT CorridorEdges
{
public:
    void addLower(const SeriePoint &point) { SeriePoints::insert(m_lower, point); }
    void addUpper(const SeriePoint &point) { SeriePoints::insert(m_upper, point); }
    void add(const std::vector<SeriePoint> &lower, const std::vector<SeriePoint> &upper);
    /// One sample of each edge stays beyond.
    void trimLeft(double x);
    void clear();

    /// In the order of time; the middle is half way between the edges.
    std::vector<TubeSample> samples() const;

private:
    std::vector<SeriePoint> m_lower;
    std::vector<SeriePoint> m_upper;
};

} // namespace Widgets
