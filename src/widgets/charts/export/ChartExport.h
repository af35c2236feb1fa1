#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/charts/export/CsvExport.h"

#include <QObject>
#include <QPointer>

class QMenu;
class QWidget;

namespace Nodes {
class widgetChartBasicSerie;
}

namespace Widgets {

class ExportProgress;
class Legend;
class Plot;

/// Saves what a chart shows: the samples of its series over the visible interval, or its picture.
/// Asks for the file's name and tells what came of it. GUI thread.
class WIDGETS_EXPORT ChartExport : public QObject
{
    Q_OBJECT

public:
    /// `element` is what dialogs come up beside. None is owned.
    ChartExport(Plot *plot, Legend *legend, QWidget *element);
    ~ChartExport() override;

    /// Appends the entries of the chart's menu.
    void fill(QMenu &menu);

    /// "" after success, else what is wrong, for operators. The picture of a PNG has two pixels
    /// where the screen has one.
    QString savePng(const QString &file) const;
    QString savePdf(const QString &file) const;
    /// Starts; see `finished`. One at a time.
    void saveCsv(const QString &file);
    bool isBusy() const;
    /// File name that is proposed: chart and interval, with that ending.
    QString proposedName(const QString &ending) const;

signals:
    /// Of a CSV; "" after success.
    void finished(const QString &error);

private:
    static void addSources(const Nodes::widgetChartBasicSerie &serie, CsvExport::Request &request);
    QString title() const;
    QString intervalText() const;
    QString askName(const QString &caption, const QString &ending, const QString &filter) const;
    void onCsvFinished(const QString &file, const QString &error);
    void tell(const QString &file, const QString &error) const;

    QPointer<Plot> m_plot;
    QPointer<Legend> m_legend;
    QWidget *m_element;
    QPointer<CsvExport> m_csv;
    QPointer<ExportProgress> m_progress;
};

} // namespace Widgets
