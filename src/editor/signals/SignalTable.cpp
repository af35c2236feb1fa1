#include "editor/signals/SignalTable.h"

#include "editor/signals/SheetPage.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/project/signals/SheetColumns.h"
#include "nodes/values/FoldCase.h"

#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace Editor {

using Nodes::NodeType;

namespace {

bool hasSignals(const Nodes::ConfigNode &node)
{
    return std::any_of(node.Children().begin(), node.Children().end(), [](const auto &child) {
        return Nodes::IsSheetRow(*child, NodeType::TypeSignal) || hasSignals(*child);
    });
}

/// An empty folder is one for signals where it is called so or stands among signals.
bool isForSignals(const Nodes::ConfigNode &folder)
{
    for (const Nodes::ConfigNode *node = &folder; node; node = node->GetParent()) {
        switch (node->GetNodeType().GetFamily()) {
        case NodeType::TypeDriver:
        case NodeType::TypeDriverGroup:
            return true;
        case NodeType::TypeFolder:
            if (Nodes::FoldCase(node->GetName()).find("сигнал") != std::string::npos ||
                hasSignals(*node))
                return true;
            break;
        default:
            return false;
        }
    }
    return false;
}

} // namespace

SignalTable::SignalTable(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
    : DocumentView(workspace, node, parent),
      m_tabs(new QTabWidget(this)),
      m_signals(new SheetPage(workspace, node, NodeType::TypeSignal, m_tabs)),
      m_alarms(new SheetPage(workspace, node, NodeType::TypeAlarm, m_tabs))
{
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(m_signals, tr("Сигналы"));
    m_tabs->addTab(m_alarms, tr("Тревоги"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
}

SignalTable::~SignalTable() = default;

bool SignalTable::shows(const Nodes::ConfigNode &node)
{
    const NodeType::enNodeType family = node.GetNodeType().GetFamily();
    return family == NodeType::TypeDriverGroup || node.AsStation() ||
           (family == NodeType::TypeFolder &&
            (hasSignals(node) || (node.Children().empty() && isForSignals(node))));
}

QString SignalTable::title() const
{
    return tr("%1 — сигналы").arg(DocumentView::title());
}

bool SignalTable::reveal(const Nodes::NodeLink &node)
{
    for (SheetPage *page : {m_signals, m_alarms}) {
        if (!page->reveal(node))
            continue;
        m_tabs->setCurrentWidget(page);
        return true;
    }
    return false;
}

} // namespace Editor
