#include "widgets/scene/editing/SceneMenu.h"

#include "widgets/scene/ProxyWidget.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/PlainTip.h"
#include "utils/editing/MenuGroup.h"

#include <QAction>
#include <QMenu>

namespace Widgets {

namespace {

bool hasWizard(const ProxyWidget *host)
{
    const Nodes::BasicWidget *node = host ? host->getNode() : nullptr;
    const unsigned code = node ? node->GetNodeType().GetCode() : 0;
    return code == Nodes::NodeType::SubtypeChartHistory ||
           code == Nodes::NodeType::SubtypeChartXY || code == Nodes::NodeType::SubtypeChartCorridor;
}

} // namespace

SceneMenu::SceneMenu(const Actions &actions) : m_actions(actions) {}

SceneMenu::~SceneMenu() = default;

void SceneMenu::fillForCanvas(QMenu *added, bool canPaste)
{
    m_menu = std::make_unique<QMenu>();
    if (added && !added->isEmpty())
        m_menu->addMenu(added);
    if (QAction *paste = m_actions.paste) {
        paste->setEnabled(canPaste);
        m_menu->addAction(paste);
        // For the keys it stays on: what the clipboard holds then is seen when they are pressed.
        connect(m_menu.get(), &QMenu::aboutToHide, paste, [paste] { paste->setEnabled(true); });
    }
    m_menu->addSeparator();
}

void SceneMenu::fillForSelection(int count, const ProxyWidget *focused)
{
    m_menu = std::make_unique<QMenu>();
    const QString suffix = count > 1 ? QStringLiteral(" виджеты") : QString();
    if (m_actions.copy)
        m_actions.copy->setText(QStringLiteral("Копировать") + suffix);
    if (m_actions.remove)
        m_actions.remove->setText(QStringLiteral("Удалить") + suffix);
    Utils::createGroupInMenu(*m_menu, {m_actions.copy, m_actions.remove});
    m_menu->addAction(QStringLiteral("Переместить выше"), this, [this] { emit orderMoved(1); });
    m_menu->addAction(QStringLiteral("Переместить ниже"), this, [this] { emit orderMoved(-1); });
    const Nodes::NodeLink link = focused ? focused->getNodeLink() : Nodes::NodeLink();
    m_menu->addAction(QStringLiteral("Выделить узел в дереве проекта"), this,
                      [this, link] { emit currentWidgetChange(link); });
    QAction *settings =
        m_menu->addAction(QIcon(QStringLiteral(":/icons/tools.svg")), QStringLiteral("Настройки"),
                          this, [this, link] { emit openWizardWindow(link); });
    settings->setEnabled(hasWizard(focused));
    m_menu->addSeparator();
}

QMenu &SceneMenu::addArranging()
{
    auto *arranging = new QMenu(QStringLiteral("Размещение"), m_menu.get());
    const QList<QAction *> present = m_menu->actions();
    m_menu->insertMenu(present.isEmpty() ? nullptr : present.last(), arranging);
    return *arranging;
}

void SceneMenu::addItems(const QList<ProxyWidget *> &hosts)
{
    for (ProxyWidget *host : hosts) {
        const Nodes::NodeLink link = host->getNodeLink();
        QAction *action =
            m_menu->addAction(Utils::PlainCaption(QString::fromStdString(link.GetLinkName(true))));
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

void SceneMenu::show(const QPoint &place)
{
    if (!m_menu->isEmpty())
        m_menu->popup(place);
}

} // namespace Widgets
