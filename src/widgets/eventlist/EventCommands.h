#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/context/SceneContext.h"
#include "widgets/eventlist/export/EventCsvExport.h"

#include <QObject>
#include <QPointer>

class QPoint;

namespace Nodes {
class BasicSignal;
class NodeLink;
} // namespace Nodes

namespace Widgets {

class ExportProgress;
class WidgetEventSortModel;
class WidgetEventView;

/// What an operator does with events of a list: goes to where their source is shown, looks at its
/// trend, copies and saves them. GUI thread.
class WIDGETS_EXPORT EventCommands : public QObject
{
    Q_OBJECT

public:
    /// Both are parts of `element`, which owns this.
    EventCommands(WidgetEventView *view, WidgetEventSortModel *rows, SceneContextPtr context,
                  QWidget *element);
    ~EventCommands() override;

    /// The one thing that a double click does: to the source, else its trend, else the details.
    void activate(int row);
    /// -1: no row was meant.
    void openMenu(int row, const QPoint &place);
    void copy() const;
    /// Asks for a name first.
    void askExport();
    /// What is shown now, in its order.
    void exportTo(const QString &file);
    bool isExporting() const { return !m_export.isNull(); }

signals:
    void detailsAsked();
    /// Of an export; "" after success.
    void exported(const QString &error);

private:
    Nodes::NodeLink sourceOf(int row) const;
    static const Nodes::BasicSignal *signalOf(const Nodes::NodeLink &source);
    void onExported(const QString &file, const QString &error);

    WidgetEventView *m_view;
    WidgetEventSortModel *m_rows;
    SceneContextPtr m_context;
    QWidget *m_element;
    QPointer<EventCsvExport> m_export;
    QPointer<ExportProgress> m_progress;
};

} // namespace Widgets
