#pragma once

#include "nodes/values/Connection.h"
#include "nodes/values/SignalValue.h"
#include "utils/relay/QueueRelay.h"

#include <QPointer>

#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace Widgets {

class ISerie;

/// Live values of a plot's series on their way to it: bursts from the publishing threads are
/// collected, nothing is left out, and the latest are kept beside the curves for as long as an
/// archive may need to have them. GUI thread.
class LiveFeed
{
public:
    struct Point
    {
        double x;
        Nodes::SignalValue value;
    };
    using Values = std::vector<Nodes::SignalValue>;

    /// `handler` takes what came for a series; `onLost` hears that more came than could be kept.
    LiveFeed(std::function<void(Values, ISerie *)> handler, std::function<void()> onLost);
    ~LiveFeed();

    /// Nothing for a series whose node has gone.
    void connect(ISerie *serie);
    void disconnectAll();
    bool isEmpty() const { return m_lines.empty(); }

    /// Keeps what came for a series.
    void keep(const ISerie *serie, double x, const Nodes::SignalValue &value);
    /// The curves are emptied now.
    void markRequest();
    /// What came after `x` and before the curves were emptied the last time, in order; with `all`
    /// also what came since.
    std::vector<Point> missing(const ISerie *serie, double x, bool all) const;

private:
    struct Line
    {
        QPointer<ISerie> serie;
        std::unique_ptr<Utils::QueueRelay<Nodes::SignalValue>> relay;
        Nodes::ScopedConnection connection; // before the relay goes
        std::deque<Point> kept;
        std::size_t before = 0; // how many of these came before the request
    };

    Line *lineOf(const ISerie *serie) const;
    void deliver(Line &line, Values values);

    std::function<void(Values, ISerie *)> m_handler;
    std::function<void()> m_onLost;
    std::vector<std::unique_ptr<Line>> m_lines;
};

} // namespace Widgets
