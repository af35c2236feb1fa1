#pragma once

#include "nodes/model/links/NodeLink.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace Editor {

class ReplaceModel;
class Workspace;

/// Makes links lead elsewhere: from one node to another, or from all nodes with a text in their
/// path to those with another text there. Shows each link before anything changes; what is done is
/// one step. GUI thread.
class ReplaceDialog : public QDialog
{
    Q_OBJECT

public:
    enum enMode { ModeNode, ModePattern };

    /// `from` and `scope` are what the user has selected; a search of the whole project is offered
    /// where `scope` has no links.
    ReplaceDialog(Workspace &workspace, enMode mode, const Nodes::NodeLink &from,
                  const Nodes::NodeLinks &scope);
    ~ReplaceDialog() override;

    void setNodes(const Nodes::NodeLink &from, const Nodes::NodeLink &to);
    void setTexts(const QString &oldText, const QString &newText);
    void setWholeProject(bool isWhole);
    ReplaceModel &model() const { return *m_model; }

public slots:
    /// Replaces what is ticked.
    void accept() override;

private:
    QWidget *makeNodePage();
    QWidget *makePatternPage();
    void pick(Nodes::NodeLink &node, const QString &title);
    void showNodes();
    void refresh();
    QString whatLacks() const;
    void count();
    Nodes::NodeLinks scope() const;

    Workspace &m_workspace;
    enMode m_mode;
    Nodes::NodeLink m_from;
    Nodes::NodeLink m_to;
    Nodes::NodeLinks m_scope;
    ReplaceModel *m_model; ///< all are children
    QPushButton *m_fromButton = nullptr;
    QPushButton *m_toButton = nullptr;
    QLineEdit *m_oldText = nullptr;
    QLineEdit *m_newText = nullptr;
    QComboBox *m_where;
    QLabel *m_summary;
    QPushButton *m_ok;
};

} // namespace Editor
