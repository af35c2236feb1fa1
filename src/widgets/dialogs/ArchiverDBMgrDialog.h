#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"

#include "utils/settings/ConfiguratorWindow.h"

#include <atomic>
#include <memory>

class QLabel;
class QPushButton;
class QStandardItemModel;
class QThread;
class QTreeView;

namespace Nodes {
class actionArchiverDBMgr;
class BasicAction;
class ConfigNode;
class Result;
} // namespace Nodes

namespace Widgets {

/// Lists the database files of the station's data directory; copies and deletes them. Deleting is
/// confirmed and refused for files in use; copying runs beside the GUI and can be cancelled. Every
/// operation needs PrivilegeConfigure. Node and project may go while the dialog is open. Place and
/// size are kept with the station's data; on a screen that is too small it comes up maximised.
class WIDGETS_EXPORT ArchiverDBMgrDialog : public BasicDialog, private Utils::ConfiguratorWindow
{
    Q_OBJECT

public:
    static constexpr const char *Key = "ArchiverDBMgrDialog";

    /// With a node of another kind the list stays empty.
    ArchiverDBMgrDialog(Nodes::BasicAction *node, const QString &name, QWidget *parent = nullptr);
    /// Cancels a copy that runs.
    ~ArchiverDBMgrDialog() override;

    /// Path of the selected file, relative to the data directory; "" without one.
    QString selectedFile() const;
    /// Copies the selected file to `target`; what came of it is shown when it has ended.
    void copySelectedTo(const QString &target);

    /// Closes, once a copy that runs has ended.
    void onUserChanged() override;

public slots:
    void refresh();
    void copySelected();
    void deleteSelected();
    void done(int result) override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void buildTable();
    QWidget *buildButtons();
    void addRow(const QString &path, quint64 size, qint64 changed, bool isInUse);
    void updateButtons();
    bool hasProject() const;
    void finishCopy();
    /// Cancels what is left of the copy and journals how it ended.
    void endCopy();
    void deleteFile(const QString &file);
    void tell(const Nodes::Result &result, const QString &what);

    std::unique_ptr<Nodes::ConfigNode> m_copy; // of the node, which may go
    Nodes::actionArchiverDBMgr *m_node;        // the same
    QStandardItemModel *m_model;
    QTreeView *m_table;
    QLabel *m_summary;
    QPushButton *m_copyButton = nullptr;
    QPushButton *m_delete = nullptr;
    QPushButton *m_refresh = nullptr;
    struct Copy;
    QThread *m_copying = nullptr;
    std::unique_ptr<Copy> m_copyTask; // worked on by the thread while that runs
    std::atomic<bool> m_isCancelled{false};
    bool m_isUserGone = false;
};

} // namespace Widgets
