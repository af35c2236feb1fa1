#pragma once

#include <QWidget>

#include <functional>

class QVBoxLayout;

namespace Editor {

class ProjectFiles;

/// What the main window shows while no project is open: what can be begun, unsaved work that a
/// crash has left, and the projects opened lately. GUI thread.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    /// Unsaved work lies in `recovery`.
    StartPage(ProjectFiles &files, const QString &recovery, QWidget *parent);

protected:
    void showEvent(QShowEvent *event) override;

private:
    void fill();
    void fillUnsaved();
    QWidget *recent(const QString &directory);
    QWidget *link(const QString &text, const QString &tip, const std::function<void()> &open);

    ProjectFiles &m_files;
    const QString m_recovery;
    QWidget *m_unsavedPart;
    QVBoxLayout *m_unsaved;
    QVBoxLayout *m_recent;
};

} // namespace Editor
