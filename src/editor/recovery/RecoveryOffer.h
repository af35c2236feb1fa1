#pragma once

#include "nodes/project/RecoveryFile.h"

#include <QMessageBox>
#include <QPointer>

#include <memory>

namespace Nodes {
class NodesCollection;
}

namespace Editor {

class AutoSave;
class Workspace;

/// Offers unsaved work that an earlier run has left, when its project is opened: tells when it was
/// kept and what differs, and does nothing before the user has decided. GUI thread.
class RecoveryOffer : public QObject
{
    Q_OBJECT

public:
    RecoveryOffer(Workspace &workspace, AutoSave &autoSave, QObject *parent);
    ~RecoveryOffer() override;

    /// The question that is on the screen; null while there is none.
    QMessageBox *question() const { return m_question; }

private:
    void look();
    bool offer(const Nodes::RecoveryInfo &info);
    void tellDamage(const Nodes::RecoveryInfo &info);
    QString describe() const;
    QMessageBox *ask(const QString &text, const QString &more);
    void restore();
    void remove();

    Workspace &m_workspace;
    AutoSave &m_autoSave;
    Nodes::RecoveryInfo m_info;
    std::unique_ptr<Nodes::NodesCollection> m_project; // of the file offered
    QPointer<QMessageBox> m_question;
    bool m_isRestoring = false;
};

} // namespace Editor
