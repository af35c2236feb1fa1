#include "editor/recovery/UnsavedProject.h"

#include "editor/project/ReadProject.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/project/RecoveryFile.h"
#include "nodes/serial/ProjectReader.h"

namespace Editor {

Nodes::Result ReadUnsaved(const Nodes::RecoveryInfo &info,
                          std::unique_ptr<Nodes::NodesCollection> &project)
{
    std::string text;
    Nodes::RecoveryInfo found;
    Nodes::ProjectReader reader;
    Nodes::LoadLimits limits; // what could not be saved for its size is here all the same
    limits.fileSize *= 8;
    limits.attributeLength *= 256;
    reader.SetLimits(limits);
    const Nodes::Result read =
        Nodes::RecoveryFile::Read(info.earlier.empty() ? info.file : info.earlier, found, text);
    return read ? reader.ReadBuffer(std::move(text), info.file, project) : read;
}

bool IsReplaced(const Nodes::RecoveryInfo &info)
{
    ReadProject there;
    std::unique_ptr<Nodes::NodesCollection> unsaved;
    return there.read(QString::fromStdString(info.project)) && ReadUnsaved(info, unsaved) &&
           there.project->GetUuid() != unsaved->GetUuid();
}

} // namespace Editor
