#pragma once

#include <QObject>
#include <QProcess>
#include <QStringList>

#include <memory>

class QTemporaryDir;

namespace Editor {

class Workspace;

/// The station started on the saved project, to see it live. Its records go to a directory of its
/// own that ends with it. GUI thread.
class StationRun : public QObject
{
    Q_OBJECT

public:
    /// `program` is the station's executable.
    StationRun(Workspace &workspace, const QString &program, QObject *parent);
    ~StationRun() override;

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// Starts it on the file as it is saved; `options` are the station's. A failure is told.
    void start(const QStringList &options);
    /// Asks it to end.
    void stop();

signals:
    void runningChanged(bool isRunning);

private:
    void onFinished(int code, QProcess::ExitStatus status);
    void onError(QProcess::ProcessError error);

    Workspace &m_workspace;
    QString m_program;
    QProcess m_process;
    std::unique_ptr<QTemporaryDir> m_records;
    bool m_isStopping = false;
};

} // namespace Editor
