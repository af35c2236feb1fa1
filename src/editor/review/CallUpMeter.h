#pragma once

#include "editor/review/ReviewFinding.h"

#include <QString>
#include <QVector>

namespace Nodes {
class ConfigNode;
}

namespace Editor {

/// Measures how fast a screen comes up, by building it beside the desktop in a preview of its own:
/// nothing is run, written or journalled. Takes as long as the screen does. GUI thread.
class CallUpMeter
{
public:
    struct Times
    {
        double firstPaint = 0; ///< ms from the start to the whole picture
        double live = 0;       ///< ms from the start until all elements show their values
        int elements = 0;
    };
    /// What the elements of one kind cost together.
    struct Share
    {
        QString kind; ///< Russian
        int count = 0;
        double time = 0; ///< ms to make and paint
        Nodes::NodeLink slowest;
        double slowestTime = 0;
    };

    /// 30 ms for up to 1000 elements, in proportion for more.
    static double budget(int elements);
    static Times measure(Nodes::ConfigNode &screen);
    /// Each element by itself, the dearest kind first.
    static QVector<Share> shares(const Nodes::ConfigNode &screen);
    /// The figures in words; where the budget is exceeded, what takes the time.
    static ReviewFindings tell(const Nodes::ConfigNode &screen, const Times &times);
};

} // namespace Editor
