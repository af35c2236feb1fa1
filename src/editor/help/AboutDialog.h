#pragma once

#include <QDialog>

class QTreeWidget;

namespace Editor {

/// Version of the program, and what it is made with, under which licences. GUI thread.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);

    /// What somebody who helps wants to know: versions of the program, of Qt and of the system.
    static QString versions();

private:
    static void addLibraries(QTreeWidget &rows);
};

} // namespace Editor
