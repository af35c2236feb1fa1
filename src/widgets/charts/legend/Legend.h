#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/series/SerieColumn.h"

#include <QPointer>
#include <QTableView>

#include <vector>

namespace Widgets {

class ChartGroupManager;
class HeaderView;
class ISerie;
class LegendModel;
class Plot;
class SerieHighlight;

/// Table of a chart's series below its plot, a row each. A tap on the first column shows or hides
/// the curve, one on the colour offers others, one on the rest brings the curve and its axis to the
/// front, again takes it back. All that an operator changes here lasts until the chart is built
/// anew. GUI thread.
class WIDGETS_EXPORT Legend : public QTableView
{
    Q_OBJECT

public:
    /// The manager, which may be null, outlives the legend.
    explicit Legend(ChartGroupManager *manager, QWidget *parent);
    ~Legend() override;

    /// Whose scales the minimum and maximum are of; null: none.
    void setPlot(Plot *plot);
    /// Nothing is live: the column of present values goes, those of minimum and maximum come, and
    /// more rows are given room.
    void setArchiverMode(bool on);
    bool archiverMode() const { return m_isArchive; }

    /// Columns that are shown, from left to right: those of the node until the operator has chosen
    /// by the header's menu.
    std::vector<SerieColumn> columns() const;
    void setColumnShown(Widgets::SerieColumn column, bool isShown);
    /// Series that was brought to the front; null: none.
    ISerie *highlighted() const;
    void highlight(ISerie *serie);
    LegendModel &rows() const { return *m_model; }
    /// Series beside those of the group, in rows below them; they outlive this or are taken back.
    void setAdded(const std::vector<ISerie *> &series);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

public slots:
    /// Takes the series of the current group and the columns of the node.
    void onUpdateProperties();

signals:
    /// A curve was shown, hidden, coloured or brought to the front: the plot has to be drawn.
    void seriesUpdated();

protected:
    void resizeEvent(QResizeEvent *event) override;
    int sizeHintForColumn(int column) const override;

private:
    void takeColumns();
    void takeSeries();
    void forgetSeries();
    void onClicked(const QModelIndex &index);
    void onCellsChanged(const QModelIndex &from, const QModelIndex &to);
    void offerColors(const QModelIndex &index);
    void showColumns();
    void fitColumns();
    int widthOf(int column) const;

    ChartGroupManager *m_manager;
    QPointer<Plot> m_plot;
    LegendModel *m_model;
    HeaderView *m_header;
    SerieHighlight *m_highlight;
    std::vector<ISerie *> m_added;
    std::vector<SerieColumn> m_configured;
    std::vector<SerieColumn> m_chosen; // by the operator; empty: as configured
    bool m_isArchive = false;
};

} // namespace Widgets
