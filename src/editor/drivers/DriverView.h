#pragma once

#include "editor/signals/SignalTable.h"

namespace Editor {

/// A driver: its settings with its polling groups, its signals and alarms, and for devices that can
/// be tried out a trial of the connection. GUI thread.
class DriverView : public SignalTable
{
    Q_OBJECT

public:
    DriverView(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);

    static bool shows(const Nodes::ConfigNode &node);

    QString title() const override;
};

} // namespace Editor
