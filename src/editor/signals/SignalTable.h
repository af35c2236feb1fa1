#pragma once

#include "editor/workspace/DocumentView.h"

class QTabWidget;

namespace Nodes {
class ConfigNode;
}

namespace Editor {

class SheetPage;

/// Tables of the signals below a node and of their alarms. GUI thread.
class SignalTable : public DocumentView
{
    Q_OBJECT

public:
    SignalTable(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent);
    ~SignalTable() override;

    /// Stations, groups of signals, folders that have signals and empty ones that are meant to.
    static bool shows(const Nodes::ConfigNode &node);

    QString title() const override;
    bool reveal(const Nodes::NodeLink &node) override;
    SheetPage &signalPage() const { return *m_signals; }
    SheetPage &alarmPage() const { return *m_alarms; }

protected:
    QTabWidget &tabs() const { return *m_tabs; }

private:
    QTabWidget *m_tabs; ///< children
    SheetPage *m_signals;
    SheetPage *m_alarms;
};

} // namespace Editor
