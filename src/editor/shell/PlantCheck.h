#pragma once

#include "nodes/drivers/modbus/ModbusProbe.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace Editor {

class ProjectSession;

/// Whether the devices of a project can be reached from here: connects to each, at most for the
/// time that its driver waits for an answer, and reads nothing. GUI thread; nothing waits.
class PlantCheck : public QObject
{
    Q_OBJECT

public:
    explicit PlantCheck(QObject *parent);
    ~PlantCheck() override;

    /// Ends an earlier one; finished() comes once all have answered or not, at once without
    /// devices.
    void start(ProjectSession &session);
    /// Nobody waits for the answer any more: finished() does not come.
    void cancel();
    bool isRunning() const { return m_waiting > 0; }

signals:
    /// Names of the drivers whose devices are away, with the reason, in Russian.
    void finished(const QStringList &away);

private:
    void onAnswer(int round, const QString &device, const Nodes::Result &connection);

    std::vector<std::unique_ptr<Nodes::ModbusProbe>> m_probes;
    QStringList m_away;
    int m_waiting = 0;
    int m_round = 0; ///< answers of earlier ones are not waited for any more
};

} // namespace Editor
