#pragma once

#include <QFileDialog>

class QLabel;

namespace Editor {

/// Picks a file, first of all of the project, and shows what a picture looks like. Deletes itself
/// when closed.
class FilePicker : public QFileDialog
{
    Q_OBJECT

public:
    /// `directory` of the project.
    FilePicker(const QString &directory, bool isSound, QWidget *parent);
    ~FilePicker() override;

    /// Starts at that file of the project.
    void showFile(const QString &name);

private:
    void preview(const QString &path);

    QString m_directory;
    QLabel *m_preview;
};

} // namespace Editor
