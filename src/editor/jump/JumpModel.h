#pragma once

#include "editor/shell/MenuEntries.h"
#include "editor/tree/TreeSearch.h"

#include "nodes/model/links/NodeLink.h"

#include <QAbstractTableModel>
#include <QIcon>
#include <QPointer>

namespace Editor {

/// What the quick jump offers for a text: nodes of the project and commands of the menus, the
/// nearest first. A key stroke costs milliseconds in a project of 100,000 nodes. GUI thread.
class JumpModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum enColumn { ColumnName, ColumnPlace, ColumnCount };

    /// The project (null: none is open) outlives the model; of `latest`, the documents seen last,
    /// and of `commands` those that are gone are left out.
    JumpModel(const Nodes::NodesCollection *project, Nodes::NodeLinks latest,
              QVector<MenuEntry> commands, QObject *parent = nullptr);
    ~JumpModel() override;

    /// Words of a name, a description, a command or its menu, a part of a path (with '/'), "#12"
    /// for a node by its number; ">" before the words leaves commands only. "" offers the latest
    /// documents.
    void search(const QString &text);
    /// Of everything found; rows are no more than `rowsAtMost`.
    std::size_t count() const { return m_count; }

    static constexpr std::size_t rowsAtMost = 100;

    /// Leads nowhere when the row is a command.
    Nodes::NodeLink node(int row) const;
    /// Null when the row is a node, or when the command is gone.
    QAction *command(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// Commands that are not possible now are shown all the same.
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Command
    {
        QPointer<QAction> action;
        QString place;
        QString text;
        QByteArray name; ///< folded, as the next
        QByteArray all;  ///< text and place
    };
    struct Row
    {
        int rank;
        Nodes::NodeLink node;
        const Command *command;
    };

    void addNodes(const QString &text);
    void addCommands(const QString &text);
    QVariant nodeData(const Nodes::ConfigNode &node, int column, int role) const;
    static QVariant commandData(const Command &command, int column, int role);

    const Nodes::NodesCollection *m_project;
    Nodes::NodeLinks m_latest;
    std::vector<Command> m_commands;
    TreeSearch m_search;
    std::vector<Row> m_rows;
    std::size_t m_count = 0;
};

} // namespace Editor
