#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/tools/FileCopier.h"

#include "utils/settings/ConfiguratorWindow.h"

#include "nodes/model/links/NodeLink.h"

#include <QStringList>

#include <memory>

class QBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace Nodes {
class actionArchiverDBMgr;
class BasicAction;
class ConfigNode;
} // namespace Nodes

namespace Widgets {

class CopyTargets;
class UniversalTableView;

/// Lists the archivers of the station and the database files of the chosen one; copies and deletes
/// them. Deleting is confirmed and refused for files in use; copying runs beside the GUI, is read
/// back and can be cancelled. Every operation needs PrivilegeConfigure and is journalled. Node and
/// project may go while the dialog is open. Place and size are kept with the station's data; on a
/// screen that is too small it comes up maximised.
class WIDGETS_EXPORT ArchiverDBMgrDialog : public BasicDialog, private Utils::ConfiguratorWindow
{
    Q_OBJECT

public:
    static constexpr const char *Key = "ArchiverDBMgrDialog";

    /// With a node of another kind the lists stay empty.
    ArchiverDBMgrDialog(Nodes::BasicAction *node, const QString &name, QWidget *parent = nullptr);
    /// Cancels a copy that runs.
    ~ArchiverDBMgrDialog() override;

    UniversalTableView &archivers() const { return *m_archivers; }
    UniversalTableView &files() const { return *m_files; }

    /// Folder that the project names for copies; "" without one.
    QString defaultFolder() const;
    /// Text of the chosen target.
    QString copyTarget() const;
    /// False while the first target is chosen and the project names no folder.
    bool hasCopyTarget() const;
    /// Copies go to that folder from now on.
    void setCopyTarget(const QString &folder);

    /// Closes, once a copy that runs has ended.
    void onUserChanged() override;

public slots:
    /// Copies the selected files to the target; what came of it is shown when all have ended.
    void copyFiles();
    /// Asks, then deletes the selected files.
    void deleteFiles();
    void refresh();
    void done(int result) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QWidget *buildTables();
    QWidget *buildTarget();
    QWidget *buildButtons();
    QPushButton *addButton(const QString &text, QBoxLayout &row);
    void showFiles(const Nodes::NodeLink &owner);
    void onListed();
    void updateControls();
    void describe();
    bool hasProject() const;
    QStringList selectedFiles() const;
    FileCopier::Copies makeCopies(QStringList &refusals) const;
    void onCopied(const Nodes::DatabaseCopy &copy, const Nodes::Result &result);
    void onCopiesFinished();
    void deleteAll(const QStringList &files);
    void tell(const QStringList &refusals, const QString &what);

    std::unique_ptr<Nodes::ConfigNode> m_copy; // of the node, which may go
    Nodes::actionArchiverDBMgr *m_node;        // the same
    Nodes::NodeLink m_owner;                   // whose files are listed
    FileCopier m_copier;
    QStringList m_copied;
    QStringList m_refusals; // of the copies
    UniversalTableView *m_archivers;
    UniversalTableView *m_files;
    CopyTargets *m_targets = nullptr;
    QLabel *m_summary;
    QProgressBar *m_progress;
    QPushButton *m_copyButton = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_refresh = nullptr;
    QPushButton *m_cancel = nullptr;
    bool m_isUserGone = false;
};

} // namespace Widgets
