#include "widgets/scene/editing/arrange/TableEdits.h"

#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/SceneSelection.h"
#include "widgets/scene/editing/arrange/LayerEdits.h"
#include "widgets/scene/editing/arrange/SceneEditTable.h"
#include "widgets/scene/editing/groups/SceneGroups.h"

#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/windows/BasicLayer.h"
#include "utils/convert/PlainTip.h"
#include "utils/undo/IUndo.h"

#include <QHash>
#include <QIcon>
#include <QMenu>
#include <QUndoCommand>

namespace Widgets {

TableEdits::TableEdits(SceneSelection &selection, const SceneGroups &groups, Utils::IUndo &undo,
                       Nodes::BasicNode *node)
    : m_selection(selection), m_groups(groups), m_undo(undo), m_node(node)
{
}

EditedElements TableEdits::edited() const
{
    EditedElements edited;
    const QList<ProxyWidget *> hosts = m_selection.hosts();
    for (const ProxyWidget *host : hosts)
        edited.elements.push_back(host->getNode());
    edited.key = m_selection.key() ? m_selection.key()->getNode() : nullptr;
    edited.document = dynamic_cast<Nodes::ConfigNode *>(m_node.get());
    edited.scope = m_groups.scope();
    return edited;
}

void TableEdits::run(const SceneEditRow &row)
{
    const EditedElements edited = this->edited();
    if (!SceneEditTable::isPossible(row, edited))
        return;
    QUndoCommand *command = row.make(edited);
    if (command && row.addsElements)
        m_selection.clear(); // what is added appears selected
    push(command);
}

void TableEdits::push(QUndoCommand *command)
{
    if (command)
        m_undo.pushToUndoStack(command);
}

void TableEdits::fillMenu(QMenu &menu)
{
    const EditedElements edited = this->edited();
    QHash<QString, QMenu *> groups;
    for (const SceneEditRow &row : SceneEditTable::rows()) {
        const QString title = QString::fromUtf8(row.group);
        if (!title.isEmpty() && !groups.contains(title))
            groups.insert(title, menu.addMenu(title));
        QMenu *in = title.isEmpty() ? &menu : groups.value(title);
        QAction *action =
            in->addAction(QIcon(QStringLiteral(":/icons/arrange/%1.svg").arg(row.id)),
                          QString::fromUtf8(row.text), this, [this, &row] { run(row); });
        action->setObjectName(QString::fromLatin1(row.id));
        action->setEnabled(SceneEditTable::isPossible(row, edited));
    }
    fillLayers(menu);
}

void TableEdits::fillLayers(QMenu &menu)
{
    const EditedElements edited = this->edited();
    const std::vector<Nodes::BasicLayer *> layers = LayerEdits::layersOf(edited.document);
    if (layers.size() < 2 || edited.elements.empty())
        return;
    QMenu *submenu = menu.addMenu(QStringLiteral("Переместить в слой"));
    for (auto layer = layers.rbegin(); layer != layers.rend(); ++layer) {
        const Nodes::NodeLink link(*layer);
        submenu->addAction(
            Utils::PlainCaption(QString::fromStdString((*layer)->GetName())), this, [this, link] {
                if (const auto *to = dynamic_cast<const Nodes::BasicLayer *>(link.GetNode()))
                    push(LayerEdits::moveTo(this->edited(), *to));
            });
    }
}

} // namespace Widgets
