#pragma once

#include <QObject>

class QSocketNotifier;

namespace Host {

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the thread that made the object; one that
/// was ignored at the start stays so. A second of a kind while the first is being handled ends the
/// process at once. One a process.
class SignalHandlers : public QObject
{
    Q_OBJECT

public:
    explicit SignalHandlers(QObject *parent = nullptr);
    ~SignalHandlers() override;

    bool wasReceived() const { return m_wasReceived; }

signals:
    void received();

private:
    void read();

    int m_pipe[2] = {-1, -1};
    QSocketNotifier *m_notifier = nullptr;
    bool m_wasReceived = false;
};

} // namespace Host
