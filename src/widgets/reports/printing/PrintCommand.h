#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QProcess>
#include <QTimer>

namespace Widgets {

/// Hands a file to the print service of the system, by its `lp` command: a server that is away,
/// slow or unknown holds nobody up. GUI thread.
class WIDGETS_EXPORT PrintCommand : public QObject
{
    Q_OBJECT

public:
    explicit PrintCommand(QObject *parent = nullptr);
    /// Ends a command that is still running.
    ~PrintCommand() override;

    /// finished() follows; not while one is under way. `printer`: its name, "": the usual one. The
    /// file may go once it has.
    void start(const QString &file, const QString &printer, const QString &title);
    bool isRunning() const { return m_isRunning; }
    /// How long the service may take, ms.
    void setPatience(int patience) { m_patience.setInterval(patience); }

signals:
    /// "" once the print service has the pages, else why not, for operators.
    void finished(const QString &error);

private:
    void onFinished(int code, QProcess::ExitStatus status);
    void onError(QProcess::ProcessError error);
    void onTimeout();
    void end(const QString &error);

    QProcess m_process;
    QTimer m_patience;
    QString m_printer;
    bool m_isRunning = false;
};

} // namespace Widgets
