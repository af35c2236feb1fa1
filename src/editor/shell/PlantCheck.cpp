#include "editor/shell/PlantCheck.h"

#include "editor/project/ProjectSession.h"

#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/system/systemCore.h"

#include <algorithm>

namespace Editor {

namespace {

constexpr int longestWait = 2000; // ms: the engineer is waiting for his screen
using Driver = Nodes::modbusDriver;

std::string textOf(const Nodes::NodeLink &node, unsigned valueId)
{
    const Nodes::BasicProperty *property = node->GetPropertyByValueId(valueId);
    return property ? property->ToString() : std::string();
}

} // namespace

PlantCheck::PlantCheck(QObject *parent) : QObject(parent) {}

PlantCheck::~PlantCheck() = default;

void PlantCheck::start(ProjectSession &session)
{
    m_probes.clear();
    m_away.clear();
    const int round = ++m_round;
    Nodes::NodeLinks drivers;
    session.project()->FindNodes(Nodes::NodeType(Driver::Code), &drivers);
    m_waiting = static_cast<int>(drivers.size());
    for (const Nodes::NodeLink &link : drivers) {
        const QString device = QString::fromStdString(link.GetLinkName());
        Nodes::ProbeTarget target;
        target.timeout = std::min(std::stoi(textOf(link, Driver::Prop::Timeout)), longestWait);
        target.unit = std::stoi(textOf(link, Driver::Prop::Unit));
        Nodes::Result expanded =
            session.core().Expand(textOf(link, Driver::Prop::Host), target.host);
        if (expanded)
            expanded = session.core().Expand(textOf(link, Driver::Prop::Port), target.port);
        if (!expanded) {
            QMetaObject::invokeMethod(
                this, [this, round, device, expanded] { onAnswer(round, device, expanded); },
                Qt::QueuedConnection);
            continue;
        }
        m_probes.push_back(std::make_unique<Nodes::ModbusProbe>());
        m_probes.back()->Start(target, {}, 0,
                               [this, round, device](const Nodes::ProbeOutcome &outcome) {
                                   QMetaObject::invokeMethod(
                                       this,
                                       [this, round, device, connection = outcome.connection] {
                                           onAnswer(round, device, connection);
                                       },
                                       Qt::QueuedConnection);
                               });
    }
    if (drivers.empty())
        emit finished({});
}

void PlantCheck::cancel()
{
    ++m_round;
    m_waiting = 0;
    m_probes.clear();
}

void PlantCheck::onAnswer(int round, const QString &device, const Nodes::Result &connection)
{
    if (round != m_round)
        return;
    if (!connection)
        m_away << QStringLiteral("%1 — %2").arg(
            device, QString::fromStdString(connection.GetResultTranslated()));
    if (--m_waiting == 0)
        emit finished(m_away);
}

} // namespace Editor
