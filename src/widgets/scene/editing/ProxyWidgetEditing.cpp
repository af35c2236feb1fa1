// How edits of one element reach the project.
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"
#include "widgets/scene/editing/Locker.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/undo/ChangePropertyCommand.h"

#include <QDataStream>
#include <QMimeData>

#include <memory>

namespace Widgets {

namespace {

QStringList readTexts(const QMimeData &mime, const QString &format)
{
    QStringList texts;
    const QByteArray bytes = mime.data(format);
    QDataStream stream(bytes);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        QString text;
        stream >> text;
        if (stream.status() == QDataStream::Ok)
            texts << text;
    }
    return texts;
}

} // namespace

void ProxyWidget::keyMove(const QRectF &delta)
{
    const Nodes::BasicWidget *node = getNode();
    if (!isSelected() || !node || (!delta.topLeft().isNull() && !node->isMovable()))
        return;
    const QRectF now = geometry();
    setGeometry(
        QRectF(now.topLeft() + delta.topLeft(), QSizeF(qMax(0.0, now.width() + delta.width()),
                                                       qMax(0.0, now.height() + delta.height()))));
    setPositionItems(QRectF());
}

QUndoCommand *ProxyWidget::getGeometryChangeCommand(QUndoCommand *parent)
{
    const Nodes::BasicWidget *node = getNode();
    const QRect now = geometry().toRect();
    if (node && now == m_committed)
        return nullptr;
    auto command = std::make_unique<QUndoCommand>(parent);
    if (!node)
        return command.release();
    m_committed = now;
    using Prop = Nodes::BasicWidget::Prop;
    const std::pair<unsigned, int> values[] = {{Prop::X, now.x()},
                                               {Prop::Y, now.y()},
                                               {Prop::Width, now.width()},
                                               {Prop::Height, now.height()}};
    for (const auto &[property, value] : values)
        new Utils::ChangePropertyCommand(m_link, property, value, command.get());
    command->setText(QStringLiteral("Изменение координат виджета %1")
                         .arg(QString::fromStdString(node->GetName())));
    return command.release();
}

QUndoCommand *ProxyWidget::getIsMoviedPropertiesChangeCommand(QUndoCommand *parent, bool &movable,
                                                              bool &push)
{
    auto command = std::make_unique<QUndoCommand>(parent);
    const Nodes::BasicWidget *node = getNode();
    if (!node)
        return command.release();
    auto *change = new Utils::ChangePropertyCommand(m_link, Nodes::BasicWidget::Prop::Movable,
                                                    movable, command.get());
    command->setText(change->text());
    if (!push)
        (void)change->setPropertyCommand(); // a refusal is logged by the command
    return command.release();
}

void ProxyWidget::onMovedFinished()
{
    auto *editor = dynamic_cast<ProxyScene *>(scene());
    // All that is selected follows the element that is dragged, and makes one step with it.
    if (editor && isSelected()) {
        editor->onMoveFinished();
        return;
    }
    std::unique_ptr<QUndoCommand> command(getGeometryChangeCommand(nullptr));
    if (command && editor)
        editor->pushToUndoStack(command.release());
    else if (command)
        command->redo();
}

void ProxyWidget::onLockChanged(bool lock)
{
    const Nodes::BasicWidget *node = getNode();
    auto *editor = dynamic_cast<ProxyScene *>(scene());
    bool movable = !lock;
    bool push = true;
    if (!node || !editor || node->isMovable() == movable)
        return;
    editor->onPropertiesChange(this, movable, push);
    m_locker->setLock(!node->isMovable()); // the change may be refused
}

bool ProxyWidget::removeWidget()
{
    auto *editor = dynamic_cast<ProxyScene *>(scene());
    if (!editor || !getNode())
        return false;
    editor->clearSelection();
    setSelected(true);
    if (isSelected())
        editor->removeWidget();
    return isSelected() || !scene();
}

Nodes::NodesArray ProxyWidget::getNaFromMineDate(const QMimeData *mime) const
{
    Nodes::NodesArray found;
    const Nodes::NodesCollection *project = m_link.GetNodesCollection();
    const QString paths = QStringLiteral("application/nodelinkpath");
    const QString ids = QStringLiteral("application/nodelink");
    if (!mime || !project)
        return found;
    if (mime->hasFormat(paths)) {
        for (const QString &path : readTexts(*mime, paths)) {
            const auto nodes = project->GetNodesByPath(path.toStdString());
            if (!nodes.empty())
                found.push_back(Nodes::NodeLink(nodes.front()));
        }
        return found;
    }
    for (const QString &id : readTexts(*mime, ids)) {
        if (const Nodes::ConfigNode *node = project->FindNode(id.toULong()))
            found.push_back(Nodes::NodeLink(node));
    }
    return found;
}

} // namespace Widgets
