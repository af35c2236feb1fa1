#pragma once

#include <QWidget>

class QVBoxLayout;

namespace Editor {

class ProjectFiles;

/// What the main window shows while no project is open: what can be begun, and the projects opened
/// lately. GUI thread.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    StartPage(ProjectFiles &files, QWidget *parent);

private:
    void fill();

    ProjectFiles &m_files;
    QVBoxLayout *m_recent;
};

} // namespace Editor
