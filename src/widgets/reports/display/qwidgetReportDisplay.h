#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/ElementBinding.h"
#include "widgets/reports/display/ReportChoice.h"

#include "nodes/reports/BasicReport.h"
#include "nodes/values/Connection.h"
#include "nodes/visual/elements/widgetReportDisplay.h"

#include <QThreadPool>
#include <QWidget>

#include <memory>
#include <vector>

class QLabel;
class QStackedWidget;

namespace LimeReport {
class PreviewReportWidget;
class ReportEngine;
} // namespace LimeReport

namespace Widgets {

class DataExport;
class ReportModelTable;
class ReportNote;
class WaitBox;

/// Reports of a Nodes::widgetReportDisplay: the operator chooses one and its interval, has it made,
/// looks at its pages, prints and saves them. At run time only; elsewhere it is a white sheet. What
/// is missing stands in the place of the pages. GUI thread.
class WIDGETS_EXPORT qwidgetReportDisplay : public QWidget, public IWidget
{
    Q_OBJECT

public:
    using Node = Nodes::widgetReportDisplay;
    class ReportToolBar;

    qwidgetReportDisplay(Nodes::widgetReportDisplay *node, QWidget *parent,
                         const SceneContextPtr &context = SceneContext::process());
    ~qwidgetReportDisplay() override;

    ReportToolBar *toolBar() const { return m_toolBar; }
    /// Null but at run time.
    LimeReport::ReportEngine *engine() const { return m_engine.get(); }
    LimeReport::PreviewReportWidget *preview() const { return m_preview; }
    /// Of the report that is chosen, as far as it was made.
    const QList<ReportModelTable *> &models() const { return m_models; }
    /// Interval of the chosen report, from the next time on that it is made.
    void setChoice(const ReportChoice &choice);
    const ReportChoice &choice() const { return m_choice; }
    /// The same without keeping it for the next time, and with variables in place of the report's
    /// own; made at once when the element is shown already.
    void present(const ReportChoice &choice, const Nodes::BasicReport::Variables &variables);

    const PropertyBindings &bindings() const override;

    ELEMENT_SIGNALS_AND_SLOTS

protected:
    void onActive(bool on) override;
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private slots:
    void onDataUpdated();

private:
    void build();
    void connectToolBar();
    void connectEngine();
    void takeReports(const Nodes::widgetReportDisplay &node);
    void takeFrame(const Nodes::widgetReportDisplay &node);
    Nodes::BasicReport *currentReport() const;
    void updateReport(bool fetch);
    bool loadTemplate(const Nodes::BasicReport &report);
    void dropModels();
    void fetchData();
    void giveUp();
    void endWaiting();
    void tellMissing(const QString &text);
    void showText(const QString &text);
    Nodes::NodeLink currentUser() const;
    void onCurrentReportChanged(int index);
    void onUserChanged();
    void generate();
    void askInterval();
    void showInterval();
    void saveTable(bool isXlsx);
    QString outputName() const;
    void savePdf();
    void cancelWork();
    void onRenderStarted();
    void onRenderFinished();
    void onOutputFinished(const QString &error);

    Utils::WatchedNode<Nodes::widgetReportDisplay> m_display;
    ReportToolBar *m_toolBar = nullptr;
    ReportNote *m_note = nullptr;
    QStackedWidget *m_body = nullptr;
    QLabel *m_missing = nullptr;
    QThreadPool m_pool; // reads the data; outlives the models
    std::unique_ptr<LimeReport::ReportEngine> m_engine;
    LimeReport::PreviewReportWidget *m_preview = nullptr;
    DataExport *m_export = nullptr;
    WaitBox *m_waitBox = nullptr;
    std::vector<Nodes::NodeLink> m_reports;
    QList<ReportModelTable *> m_models; // owned by the engine
    bool m_isLoaded = false;            // the template of the chosen report is in the engine
    Nodes::NodeLink m_user;             // for whom it was made
    ReportChoice m_choice;
    Nodes::BasicReport::Variables m_variables; // in place of the report's own
    Nodes::ReportSpan m_span;                  // that the models are of
    int m_pending = 0;
    Nodes::ScopedConnection m_userConnection;
    ElementBinding m_binding;
};

} // namespace Widgets
