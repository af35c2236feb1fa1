#pragma once

#include <QDialog>

class QTreeWidget;
class QTreeWidgetItem;

namespace Widgets {
struct PasteReport;
}

namespace Editor {

class Workspace;

/// The references of what was pasted that lead nowhere here, or maybe elsewhere than they should.
/// A double click shows the element. Blocks nothing; deletes itself when closed. GUI thread.
class PasteReportDialog : public QDialog
{
    Q_OBJECT

public:
    PasteReportDialog(Workspace &workspace, const Widgets::PasteReport &report);

    /// A notice about what became of a paste, and the list when there are references to look at;
    /// nothing when there is nothing to say.
    static void tell(Workspace &workspace, const Widgets::PasteReport &report);

private:
    void showElement(const QTreeWidgetItem *row);

    Workspace &m_workspace;
    QTreeWidget *m_rows;
};

} // namespace Editor
