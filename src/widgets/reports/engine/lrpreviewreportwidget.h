#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidget>

namespace LimeReport {

class PreviewBody;
class ReportDesk;
class ReportEngine;

/// The pages of a report, one below the other. Made by ReportEngine::createPreviewWidget. GUI
/// thread.
///
/// Keys: arrows scroll, Page Up and Page Down turn the page, Home and End go to the ends, + and -
/// zoom; the wheel with Ctrl zooms too.
class WIDGETS_EXPORT PreviewReportWidget : public QWidget
{
    Q_OBJECT

public:
    ~PreviewReportWidget() override;

    int pageCount() const;
    /// From 1; 0 without pages.
    int currentPage() const;
    int scalePercent() const;

public slots:
    /// Renders the report anew, from what its variables and models hold now.
    void refreshPages();
    void zoomIn();
    void zoomOut();
    void firstPage();
    void priorPage();
    void nextPage();
    void lastPage();
    /// From 1; what is out of range goes to the nearest.
    void pageNavigatorChanged(int page);
    /// Asks for a printer and prints the pages that are shown.
    void print();
    /// Asks for a file and saves the pages that are shown.
    void printToPDF();
    /// The same without asking.
    void savePdf(const QString &file);
    /// 10 to 800.
    void setScalePercent(int percent);
    /// Keep to the width or the whole of a page, also when the size of the widget changes, until
    /// the scale is changed otherwise.
    void fitWidth();
    void fitPage();

signals:
    void pageChanged(int page);
    void pagesSet(int pages);
    void scalePercentChanged(int percent);
    /// Of print() and printToPDF(): "" after success, else why not, for operators.
    void outputFinished(const QString &error);

private:
    friend class ReportEngine;
    PreviewReportWidget(ReportDesk &desk, QWidget *parent);

    PreviewBody *d; // a child
};

} // namespace LimeReport
