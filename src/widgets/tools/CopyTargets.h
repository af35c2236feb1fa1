#pragma once

#include <QComboBox>

namespace Widgets {

/// Where copies go: the folder that the project names, disks that were plugged in, and any other
/// folder that the operator picks. GUI thread.
class CopyTargets : public QComboBox
{
    Q_OBJECT

public:
    /// `preset` may be empty: then the first entry says so and leads nowhere.
    explicit CopyTargets(const QString &preset, QWidget *parent = nullptr);

    /// "" where the current entry leads nowhere.
    QString folder() const { return currentData().toString(); }
    /// Makes it the current one.
    void choose(const QString &folder);

private:
    void addDisks();
    void onActivated(int index);

    int m_previous = 0;
};

} // namespace Widgets
