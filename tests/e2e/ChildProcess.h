#pragma once

#include <QProcess>

namespace EndToEnd {

/// A program that never outlives the test, even when that crashes. Its stderr is the test's.
class ChildProcess : public QProcess
{
    Q_OBJECT

public:
    ChildProcess();
    ~ChildProcess() override;

    [[nodiscard]] bool begin(const QString &program, const QStringList &arguments);
    /// Asks it to end and waits; true when it ended by itself with code 0.
    bool end();

protected:
    void setupChildProcess() override;
};

} // namespace EndToEnd
