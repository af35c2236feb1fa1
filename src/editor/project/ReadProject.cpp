#include "editor/project/ReadProject.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/serial/ProjectReader.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace Editor {

ReadProject::ReadProject() = default;
ReadProject::~ReadProject() = default;
ReadProject::ReadProject(ReadProject &&) noexcept = default;
ReadProject &ReadProject::operator=(ReadProject &&) noexcept = default;

Nodes::Result ReadProject::read(const QString &file, Nodes::LoadProgress *progress)
{
    const std::string path = file.toStdString();
    constexpr int attempts = 3;
    for (int attempt = 1;; ++attempt) {
        if (QFileInfo(file).isFile()) // a pipe would be waited for
            stamp = Nodes::FileStamp::Of(path);
        Nodes::ProjectReader reader;
        reader.SetLenient(true);
        reader.SetProgress(progress);
        Nodes::Result done = reader.ReadFile(path, project);
        if (attempt < attempts && stamp.Compare(path) == Nodes::FileStamp::Changed)
            continue;
        report = reader.GetReport();
        if (reader.IsNewer())
            readOnlyReason = QCoreApplication::translate(
                "Editor::ReadProject", "проект записан более новой программой и показан не "
                                       "полностью; обновите программу");
        return done;
    }
}

} // namespace Editor
