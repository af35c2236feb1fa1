#pragma once

#include "editor/workspace/DocumentView.h"

#include "nodes/values/Connection.h"

class QLabel;

namespace LimeReport {
class PreviewReportWidget;
class ReportEngine;
} // namespace LimeReport

namespace Nodes {
class BasicReport;
}

namespace Editor {

/// A report as it will be printed, filled with made-up rows that say so, as the configurator has no
/// history; signals for it, and a template made from its data sources. GUI thread.
class ReportDocument : public DocumentView
{
    Q_OBJECT

public:
    ReportDocument(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~ReportDocument() override;

    static bool shows(const Nodes::ConfigNode &node);
    /// What stands above the pages.
    QString note() const;

public slots:
    /// Asks for signals and adds a table of them by hours.
    void addSignals();
    /// Writes the file and gives it to the report; a file that is there already is never replaced.
    void makeTemplate();
    void refresh();

public:
    /// A table of these signals by hours, as one step.
    bool addTable(const Nodes::NodeLinks &signalNodes);

protected:
    void showEvent(QShowEvent *event) override;

private:
    const Nodes::BasicReport *report() const;
    void refreshLater();
    void fill(const Nodes::BasicReport &report);
    QString templateFile(const Nodes::BasicReport &report) const;

    QLabel *m_note; ///< child
    LimeReport::ReportEngine *m_engine;
    LimeReport::PreviewReportWidget *m_preview;
    bool m_isStale = false; ///< the project has changed since
    Nodes::ScopedConnection m_connection;
};

} // namespace Editor
