#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QString>

#include <memory>

class QPrinter;

namespace LimeReport {

class IDataSourceManager;
class PreviewReportWidget;
class ReportDesk;

/// Prints reports from templates (.lrxml): reads one, fills it from variables and item models,
/// shows, prints and saves the pages. GUI thread; the pages are made on a thread of its own from
/// what variables and models hold when that is started. docs/report-templates.md tells the format.
///
/// Nothing is ever asked or told in a box of its own: `lastError()` has what went wrong, and what
/// cannot be printed stands as a marked placeholder on the page.
class WIDGETS_EXPORT ReportEngine : public QObject
{
    Q_OBJECT

public:
    explicit ReportEngine(QObject *parent = nullptr);
    /// Ends a rendering that is under way.
    ~ReportEngine() override;

    /// False when it cannot be used; the report that was loaded before is gone then too. Reading
    /// again by itself when the file changes is not offered: `reload` is taken for compatibility.
    bool loadFromFile(const QString &file, bool reload = false);
    /// `name`: title of what is printed.
    bool loadFromString(const QString &report, const QString &name = QString());

    /// Variables and data sources; owned by the engine.
    IDataSourceManager *dataManager();

    /// Shows the report's pages and follows every later rendering. Starts one when a report is
    /// loaded. The caller owns it; it outlives the engine as an empty sheet.
    PreviewReportWidget *createPreviewWidget(QWidget *parent = nullptr);

    /// Renders anew and returns when done; the event loop goes on running meanwhile, so the caller
    /// has to expect its slots to be called. False with lastError() when it did not work, was
    /// cancelled, or a rendering was under way already.
    bool printReport(QPrinter *printer = nullptr);
    bool printToPDF(const QString &file);

    /// The same without waiting: true when started, `saved` follows.
    bool startPdf(const QString &file);
    /// Makes the pages: true when started, renderStarted() and renderFinished() follow. One that
    /// is under way is given up first.
    bool render();
    bool isRendering() const;
    /// Pages of the last rendering, also while it is still going on.
    int pageCount() const;

    /// Everything that is wrong with the template, its data and the last output, one a line; ""
    /// when nothing is.
    QString lastError() const;

    /// Whether printReport and printToPDF show how far they are, with a way to cancel. On by
    /// default.
    void setShowProgressDialog(bool show);
    bool isShowProgressDialog() const;

public slots:
    /// Ends a rendering or output early; renderFinished() or saved() follow soon.
    void cancelRender();

signals:
    void renderStarted();
    /// Also after a rendering that failed or was cancelled.
    void renderFinished();
    /// So many pages are there; at most some ten times a second.
    void renderPageFinished(int pages);
    /// Of startPdf: "" after success, else why not.
    void saved(const QString &file, const QString &error);

private:
    void onPutOut(const QString &file, const QString &error);

    std::unique_ptr<ReportDesk> d;
};

} // namespace LimeReport
