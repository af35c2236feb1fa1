// The menu from which new elements are added to the topmost layer.
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/models/SortNodeTypes.h"
#include "utils/undo/AddNodeLinkCommand.h"

#include <QMenu>

namespace Widgets {

namespace {

void warn(const char *text)
{
    PlainMessageBox::ask(QMessageBox::Warning, QStringLiteral("Внимание"), QString::fromUtf8(text));
}

} // namespace

void ProxyScene::fillAddMenu(const ProxyLayer &topmost)
{
    if (!m_addMenu)
        m_addMenu = std::make_unique<QMenu>(QStringLiteral("Добавить виджет"));
    const Nodes::ConfigNode *node = topmost.getNode();
    const auto types = node ? node->GetAvailableChildNodes() : std::vector<Nodes::NodeType>();
    if (types.empty())
        return;
    m_addMenu->clear();
    for (const auto &group : Utils::SortNodeTypes(types))
        fillAddGroup(group);
    emit actionsChanged(m_addMenu.get());
}

void ProxyScene::fillAddGroup(const std::vector<Nodes::NodeType> &types)
{
    QMenu *menu = m_addMenu.get();
    if (types.size() > 1)
        menu = menu->addMenu(QString::fromStdString(types.front().GetTypeNameTranslated()));
    for (const Nodes::NodeType &type : types) {
        QAction *action = menu->addAction(QString::fromStdString(type.GetSubtypeNameTranslated()));
        connect(action, &QAction::triggered, this,
                [this, type] { addWidget(type, m_pastePosition, false); });
    }
    m_addMenu->addSeparator();
}

bool ProxyScene::addWidget(Nodes::NodeType type, QPointF point, bool isCentre)
{
    const QList<ProxyLayer *> sorted = sortZOrder();
    Nodes::ConfigNode *parent = sorted.isEmpty() ? nullptr : sorted.last()->getNode();
    Nodes::NodesCollection *project = parent ? parent->GetNodesCollection() : nullptr;
    if (!project) {
        warn("Коллекция не найдена");
        return false;
    }
    // The layer hears of the new child and shows it.
    auto *node = dynamic_cast<Nodes::BasicWidget *>(project->CreateNode(type, parent));
    if (!node) {
        warn("Узел не создан");
        return false;
    }
    const Nodes::NRect box = node->GetGeometry();
    const QPoint corner =
        point.toPoint() - (isCentre ? QPoint(box.width / 2, box.height / 2) : QPoint());
    node->SetPosition(corner.x(), corner.y());
    pushToUndoStack(new Utils::AddNodeLinkCommand(Nodes::NodeLink(node), Nodes::NodeLink(parent)));
    return true;
}

} // namespace Widgets
