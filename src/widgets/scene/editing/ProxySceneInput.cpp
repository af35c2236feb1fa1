// Keys, the context menu and what is dropped from the element panel, while editing.
#include "widgets/dialogs/PlainMessageBox.h"
#include "widgets/scene/ProxyLayer.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyWidget.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/PlainTip.h"
#include "utils/editing/MenuGroup.h"

#include <QAction>
#include <QCursor>
#include <QDataStream>
#include <QGraphicsSceneContextMenuEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>

#include <algorithm>

namespace Widgets {

namespace {

const QString typesFormat = QStringLiteral("application/nodetype");

bool isArrow(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

QRectF arrowDelta(const QKeyEvent &event)
{
    const int key = event.key();
    const QPointF step(key == Qt::Key_Right  ? 1
                       : key == Qt::Key_Left ? -1
                                             : 0,
                       key == Qt::Key_Down ? 1
                       : key == Qt::Key_Up ? -1
                                           : 0);
    return event.modifiers() == Qt::ShiftModifier ? QRectF(0, 0, step.x(), step.y())
                                                  : QRectF(step.x(), step.y(), 0, 0);
}

bool hasWizard(const ProxyWidget *host)
{
    const Nodes::BasicWidget *node = host ? host->getNode() : nullptr;
    const unsigned code = node ? node->GetNodeType().GetCode() : 0;
    return code == Nodes::NodeType::SubtypeChartHistory ||
           code == Nodes::NodeType::SubtypeChartXY || code == Nodes::NodeType::SubtypeChartCorridor;
}

} // namespace

void ProxyScene::keyPressEvent(QKeyEvent *event)
{
    if (!isEditing()) {
        QGraphicsScene::keyPressEvent(event);
        return;
    }
    if (isArrow(event->key())) {
        for (ProxyLayer *layer : qAsConst(m_layers))
            layer->keyMove(arrowDelta(*event));
    } else if (event->key() == Qt::Key_Escape) {
        clearSelection();
    } else if (event->key() == Qt::Key_Delete) {
        removeWidget();
    } else if (event->matches(QKeySequence::Copy) && m_copyAction) {
        m_copyAction->trigger();
    } else if (event->matches(QKeySequence::Paste) && m_pasteAction) {
        if (const QGraphicsView *view = views().value(0))
            m_pastePosition = view->mapToScene(view->viewport()->mapFromGlobal(QCursor::pos()));
        m_pasteAction->trigger();
    } else {
        QGraphicsScene::keyPressEvent(event);
        return;
    }
    event->accept();
}

void ProxyScene::keyReleaseEvent(QKeyEvent *event)
{
    if (!isEditing()) {
        // Elements at run time see the release of a key as one more press; they rely on it.
        QGraphicsScene::keyPressEvent(event);
        return;
    }
    if (isArrow(event->key()) && !event->isAutoRepeat())
        onMoveFinished();
    QGraphicsScene::keyReleaseEvent(event);
}

void ProxyScene::contextMenuEvent(QGraphicsSceneContextMenuEvent *event)
{
    if (!isEditing()) {
        QGraphicsScene::contextMenuEvent(event);
        return;
    }
    QList<ProxyWidget *> hosts;
    for (QGraphicsItem *item : items(event->scenePos())) {
        auto *host = dynamic_cast<ProxyWidget *>(item);
        if (host && host->getNode())
            hosts.append(host);
    }
    selectUnderMouse(hosts, event->modifiers());
    m_contextMenu = std::make_unique<QMenu>();
    if (selectedItems().isEmpty()) {
        m_pastePosition = event->scenePos();
        fillCanvasMenu(*m_contextMenu);
    } else {
        fillSelectionMenu(*m_contextMenu);
    }
    addItemActions(*m_contextMenu, hosts);
    if (!m_contextMenu->isEmpty())
        m_contextMenu->popup(event->screenPos());
    event->accept();
}

void ProxyScene::selectUnderMouse(const QList<ProxyWidget *> &hosts,
                                  Qt::KeyboardModifiers modifiers)
{
    const auto topmost = std::find_if(hosts.begin(), hosts.end(), [](const ProxyWidget *host) {
        return host->flags() & QGraphicsItem::ItemIsSelectable;
    });
    if (topmost == hosts.end() || (*topmost)->isSelected())
        return;
    if (modifiers != Qt::ControlModifier)
        clearSelection();
    (*topmost)->setSelected(true);
    setFocusItem(*topmost);
}

void ProxyScene::fillCanvasMenu(QMenu &menu)
{
    if (m_addMenu && !m_addMenu->isEmpty())
        menu.addMenu(m_addMenu.get());
    if (m_pasteAction) {
        m_pasteAction->setEnabled(canPaste());
        menu.addAction(m_pasteAction);
        // For the keys it stays on: what the clipboard holds then is seen when they are pressed.
        connect(&menu, &QMenu::aboutToHide, m_pasteAction,
                [action = m_pasteAction] { action->setEnabled(true); });
    }
    menu.addSeparator();
}

void ProxyScene::fillSelectionMenu(QMenu &menu)
{
    const QString suffix = selectedItems().size() > 1 ? QStringLiteral(" виджеты") : QString();
    if (m_copyAction)
        m_copyAction->setText(QStringLiteral("Копировать") + suffix);
    if (m_deleteAction)
        m_deleteAction->setText(QStringLiteral("Удалить") + suffix);
    Utils::createGroupInMenu(menu, {m_copyAction, m_deleteAction});
    menu.addAction(QStringLiteral("Переместить выше"), this, &ProxyScene::upZValue);
    menu.addAction(QStringLiteral("Переместить ниже"), this, &ProxyScene::downZValue);
    const auto *focused = dynamic_cast<const ProxyWidget *>(focusItem());
    const Nodes::NodeLink link = focused ? focused->getNodeLink() : Nodes::NodeLink();
    menu.addAction(QStringLiteral("Выделить узел в дереве проекта"), this,
                   [this, link] { emit currentWidgetChange(link); });
    QAction *settings =
        menu.addAction(QIcon(QStringLiteral(":/icons/tools.svg")), QStringLiteral("Настройки"),
                       this, [this, link] { emit openWizardWindow(link); });
    settings->setEnabled(hasWizard(focused));
    menu.addSeparator();
}

void ProxyScene::addItemActions(QMenu &menu, const QList<ProxyWidget *> &hosts)
{
    for (ProxyWidget *host : hosts) {
        const Nodes::NodeLink link = host->getNodeLink();
        QAction *action =
            menu.addAction(Utils::PlainCaption(QString::fromStdString(link.GetLinkName(true))));
        action->setCheckable(true);
        action->setChecked(host->isSelected());
        connect(action, &QAction::toggled, host, [this, host, link](bool on) {
            if (host->flags() & QGraphicsItem::ItemIsSelectable)
                host->setSelected(on);
            else
                emit currentWidgetChange(link);
        });
    }
}

void ProxyScene::dragEnterEvent(QGraphicsSceneDragDropEvent *event)
{
    if (!isEditing())
        return;
    if (event->mimeData()->hasFormat(typesFormat))
        event->accept();
    else
        QGraphicsScene::dragEnterEvent(event);
}

void ProxyScene::dragMoveEvent(QGraphicsSceneDragDropEvent *event)
{
    if (!isEditing())
        return;
    if (event->mimeData()->hasFormat(typesFormat))
        event->accept();
    else
        QGraphicsScene::dragMoveEvent(event);
}

void ProxyScene::dropEvent(QGraphicsSceneDragDropEvent *event)
{
    if (!isEditing() || !event->mimeData()->hasFormat(typesFormat)) {
        QGraphicsScene::dropEvent(event);
        return;
    }
    const QByteArray bytes = event->mimeData()->data(typesFormat);
    QDataStream stream(bytes);
    while (!stream.atEnd() && stream.status() == QDataStream::Ok) {
        QString text;
        stream >> text;
        const Nodes::NodeType type(text.toStdString());
        if (type.GetFamily() != Nodes::NodeType::TypeWidget)
            continue;
        if (sortZOrder().isEmpty()) {
            PlainMessageBox::ask(QMessageBox::Critical, QStringLiteral("Внимание"),
                                 QStringLiteral("Отсутствуют слои"));
            break;
        }
        if (addWidget(type, event->scenePos(), true))
            emit addWidgetFromPanel();
    }
    event->accept();
}

} // namespace Widgets
