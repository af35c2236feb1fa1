#pragma once

#include "widgets/WidgetsExport.h"

#include <QFrame>
#include <QPointer>
#include <QTimer>

#include <memory>

class QLabel;
class QTableView;
class QToolButton;

namespace Nodes {
struct HistoryAnswer;
}

namespace Widgets {

class CursorTable;
class HistoryAsker;
class IPickerCanvas;
class Plot;
class SpanReader;

/// Table below a plot, there while both its cursors are set: their times, and what each series
/// does between them. At first by what is drawn, then by what the archive holds of that span. GUI
/// thread.
class WIDGETS_EXPORT CursorPanel : public QFrame
{
    Q_OBJECT

public:
    /// Samples of one signal that one answer has; a span with more is made of aggregates first.
    static constexpr std::size_t MaximumSamples = 100000;
    /// With more than so many it stays at that: reading them would take minutes.
    static constexpr std::size_t ExactSamples = 20000000;

    CursorPanel(Plot *plot, QWidget *parent);
    ~CursorPanel() override;

    CursorTable &table() const { return *m_table; }
    QString heading() const;

    /// Wants a row for each series, up to a few; what does not fit scrolls.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// It is there, or has gone.
    void shown(bool isShown);
    /// Numbers of the archive stand in the table now.
    void completed();

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int heightOf(int rows) const;
    void onCursors();
    void takeDrawn();
    void askArchive();
    void onAnswered(const std::shared_ptr<const Nodes::HistoryAnswer> &answer);
    void removeSecond();
    void fitColumns();
    IPickerCanvas *picker() const;

    QPointer<Plot> m_plot;
    CursorTable *m_table;
    QTableView *m_view;
    QLabel *m_heading;
    HistoryAsker *m_asker;
    SpanReader *m_reader;
    QTimer m_askTimer; // while a cursor is dragged nothing is asked
    double m_from = 0;
    double m_to = 0;
};

} // namespace Widgets
