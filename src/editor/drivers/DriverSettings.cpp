#include "editor/drivers/DriverSettings.h"

#include "editor/drivers/PropertyForm.h"
#include "editor/workspace/Workspace.h"

#include "nodes/drivers/modbus/ModbusAddresses.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/model/NodeNotifications.h"
#include "nodes/model/NodesCollection.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int linkRole = Qt::UserRole;
constexpr std::size_t mostShown = 500; // findings

void append(QTreeWidget &list, const Nodes::ValidationResults &results)
{
    for (const Nodes::ValidationMessage &message : results) {
        if (list.topLevelItemCount() >= int(mostShown))
            return;
        auto *item = new QTreeWidgetItem(&list, {QString::fromStdString(message.GetMessageStr())});
        item->setToolTip(0, item->text(0));
        item->setData(0, linkRole, qulonglong(message.GetNodeLink().GetNodeId()));
    }
}

} // namespace

DriverSettings::DriverSettings(Workspace &workspace, const Nodes::NodeLink &driver, QWidget *parent)
    : QWidget(parent), m_workspace(workspace), m_driver(driver), m_findings(new QTreeWidget(this))
{
    auto *form = new QScrollArea(this);
    form->setWidget(new PropertyForm(workspace, driver, form));
    form->setWidgetResizable(true);
    form->setFrameShape(QFrame::NoFrame);
    form->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    form->setMinimumWidth(form->widget()->sizeHint().width() + form->verticalScrollBar()->width());
    m_findings->setHeaderLabel(tr("Замечания"));
    m_findings->setRootIsDecorated(false);
    m_findings->setWordWrap(true);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(form, 2);
    layout->addWidget(m_findings, 1);
    if (Nodes::NodesCollection *project = driver.GetNodesCollection())
        m_connection = project->ConnectChanged([this](const Nodes::NodeChange &) { checkLater(); });
    connect(m_findings, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) {
        m_workspace.reveal(
            Nodes::NodeLink(item->data(0, linkRole).toULongLong(), m_driver.GetNodesCollection()));
    });
    check();
}

DriverSettings::~DriverSettings() = default;

QStringList DriverSettings::findings() const
{
    QStringList texts;
    for (int i = 0; i < m_findings->topLevelItemCount(); ++i)
        texts << m_findings->topLevelItem(i)->text(0);
    return texts;
}

void DriverSettings::checkLater()
{
    if (m_isStale)
        return;
    m_isStale = true;
    QMetaObject::invokeMethod(this, &DriverSettings::check, Qt::QueuedConnection);
}

void DriverSettings::check()
{
    m_isStale = false;
    m_findings->clear();
    const Nodes::ConfigNode *driver = m_driver.GetNode();
    if (!driver)
        return;
    append(*m_findings, driver->isValid());
    if (const auto *modbus = dynamic_cast<const Nodes::modbusDriver *>(driver))
        append(*m_findings, Nodes::FindAddressTrouble(*modbus));
    if (m_findings->topLevelItemCount() == 0)
        new QTreeWidgetItem(m_findings, {tr("Замечаний нет")});
}

} // namespace Editor
