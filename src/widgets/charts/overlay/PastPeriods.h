#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <vector>

namespace Nodes {
class ConfigNode;
struct HistoryAnswer;
} // namespace Nodes

namespace Widgets {

class ChartGroupManager;
class HistoryAsker;
class ISerie;
class Legend;
class Plot;

/// Other periods of the signals of a plot laid over the present one as dashed lines: those that an
/// operator asks for, and those of series that are configured so. Their history is asked for by
/// their own requests, again whenever the window leaves what is held. GUI thread.
class WIDGETS_EXPORT PastPeriods : public QObject
{
    Q_OBJECT

public:
    PastPeriods(Plot *plot, ChartGroupManager *manager, Legend *legend);
    ~PastPeriods() override;

    /// Every visible series of the plot that has an archive, that many milliseconds earlier; above
    /// 0. Those laid over before stay.
    void add(double shift);
    /// Takes back all that was added.
    void clear();
    /// What the lines show now, by the rights of the present user.
    void readAnew();
    bool isEmpty() const { return m_added.empty(); }

signals:
    /// Lines have taken over what the archive answered.
    void completed();

private:
    /// What one shift needs to be read.
    struct Reader
    {
        double shift = 0;
        std::unique_ptr<HistoryAsker> asker;
        double from = 0; // what is held or asked for, X values of the plot
        double to = 0;
    };
    /// A line that was added, with the node that it is drawn by.
    struct Added
    {
        std::unique_ptr<Nodes::ConfigNode> node;
        std::unique_ptr<ISerie> serie;
    };

    std::vector<ISerie *> shifted() const;
    Reader &readerOf(double shift);
    void update();
    void ask(Reader &reader, bool isEmpty);
    void onAnswered(double shift, const std::shared_ptr<const Nodes::HistoryAnswer> &answer);
    void tellLegend();
    void watch();

    QPointer<Plot> m_plot;
    QPointer<ChartGroupManager> m_manager;
    QPointer<Legend> m_legend;
    std::vector<Added> m_added;
    std::vector<Reader> m_readers;
    QTimer m_delay; // panning asks once it rests
    QTimer m_watch; // a plot that empties its curves empties these, too
};

} // namespace Widgets
