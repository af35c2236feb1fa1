#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

namespace Nodes {
class systemCore;
class NodeLink;
} // namespace Nodes

class QLabel;

namespace Widgets {

class ProblemsView;

/// The problems of the project that runs; a row leads to the window that shows the node. GUI
/// thread.
class WIDGETS_EXPORT ProblemsDialog : public BasicDialog
{
    Q_OBJECT

public:
    static constexpr const char *Key = "ProblemsDialog";

    explicit ProblemsDialog(QWidget *parent = nullptr);

    ProblemsView &view() const { return *m_view; }
    /// Begins the check. The core outlives the dialog.
    void check(const Nodes::systemCore *core);

private:
    void goTo(const Nodes::NodeLink &node);

    ProblemsView *m_view;
    QLabel *m_hint;
};

} // namespace Widgets
