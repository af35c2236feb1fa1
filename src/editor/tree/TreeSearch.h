#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <unordered_set>
#include <vector>

namespace Nodes {
class ConfigNode;
class NodesCollection;
} // namespace Nodes

namespace Editor {

/// Finds nodes of a project by their texts. It keeps the texts of all nodes one after the other and
/// searches them as one, so that a key stroke costs milliseconds in a project of 100,000 nodes.
/// GUI thread.
class TreeSearch
{
public:
    struct Found
    {
        std::vector<unsigned long> hits;         ///< ids in tree order
        std::unordered_set<unsigned long> shown; ///< of the hits and of all nodes above them
    };

    /// The texts are read anew for the next question: a name or a description has changed. That
    /// nodes came, went or moved is seen without it.
    void forget() { m_project = nullptr; }

    /// Nodes whose name or description has all words of `text`. A text with a '/' is looked for as
    /// it is in the path, "#12" is the node of that id. Case and the dots of 'ё' do not matter. A
    /// text without words finds nothing.
    Found find(const Nodes::NodesCollection &project, const QString &text);

private:
    struct Entry
    {
        unsigned long id;
        int parent;    ///< its entry; -1: none
        int textBegin; ///< in m_texts
    };

    void read(const Nodes::NodesCollection &project);
    void readNode(const Nodes::ConfigNode &node, int parent);
    std::vector<int> candidates(const QList<QByteArray> &words) const;
    bool matches(int entry, const QByteArray &word) const;
    QByteArray textOf(int entry) const;
    QByteArray pathOf(int entry) const;

    const Nodes::NodesCollection *m_project = nullptr; ///< never followed, only compared
    unsigned long m_token = 0;
    unsigned long m_revision = 0;
    std::vector<Entry> m_entries; ///< in tree order: parents before children
    QByteArray m_texts;           ///< folded: name, line feed, description, line feed; of each
};

} // namespace Editor
