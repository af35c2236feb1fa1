#include "editor/signals/SheetNotes.h"

#include "nodes/archive/ArchivedSignals.h"
#include "nodes/drivers/modbus/modbusGroup.h"
#include "nodes/drivers/modbus/modbusSignal.h"
#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/project/signals/SheetColumns.h"

#include <algorithm>

namespace Editor {

namespace {

const std::string addressTitle = "Адрес";
const std::string archiveTitle = "Архив";

QString address(const Nodes::ConfigNode &node)
{
    const auto *signal = dynamic_cast<const Nodes::modbusSignal *>(&node);
    const Nodes::modbusGroup *group = signal ? signal->GetGroup() : nullptr;
    return group ? QString::number(group->GetFirstAddress() + signal->GetPoint(*group).offset)
                 : QString();
}

} // namespace

void SheetNotes::addTo(Nodes::SheetColumns &columns, const Nodes::ConfigNode &scope,
                       unsigned family)
{
    if (family != Nodes::NodeType::TypeSignal)
        return;
    const auto kinds = Nodes::FindSheetKinds(scope, family);
    const bool hasAddresses = std::any_of(kinds.begin(), kinds.end(), [](const auto *kind) {
        return kind->type == Nodes::NodeType(Nodes::modbusSignal::Code);
    });
    if (hasAddresses)
        columns.AddNote(addressTitle);
    columns.AddNote(archiveTitle);
}

QString SheetNotes::text(const std::string &title, const Nodes::ConfigNode &node) const
{
    if (title == addressTitle)
        return address(node);
    if (!m_isRead) {
        m_archives.clear();
        for (const auto &[signal, order] : Nodes::FindArchivedSignals(node)) {
            if (order.by)
                m_archives[signal->GetId()] = QString::fromStdString(order.by->GetName());
        }
        m_isRead = true;
    }
    const auto found = m_archives.find(node.GetId());
    return found == m_archives.end() ? QString() : found->second;
}

} // namespace Editor
