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

    struct Hit
    {
        unsigned long id;
        int rank; ///< as `nearness` says
    };
    struct Best
    {
        std::vector<Hit> hits; ///< the nearest first
        std::size_t count = 0; ///< of all that were found
    };

    /// As texts are compared: without capitals, without the dots of 'ё'; UTF-8.
    static QByteArray folded(const QString &text);
    /// How near a name is to what is looked for, both folded: 0 the same, 1 begins with it, 2 a
    /// word of it does, 3 has it, 4 does not have it.
    static int nearness(const QByteArray &name, const QByteArray &text);

    /// The texts are read anew for the next question: a name or a description has changed. That
    /// nodes came, went or moved is seen without it.
    void forget() { m_project = nullptr; }

    /// Nodes whose name or description has all words of `text`. A text with a '/' is looked for as
    /// it is in the path, "#12" is the node of that id. Case and the dots of 'ё' do not matter. A
    /// text without words finds nothing.
    Found find(const Nodes::NodesCollection &project, const QString &text);
    /// The same nodes, no more than `atMost`: the nearest names first, of these the shortest. A
    /// path is near when it ends with the text.
    Best best(const Nodes::NodesCollection &project, const QString &text, std::size_t atMost);

private:
    struct Entry
    {
        unsigned long id;
        int parent;    ///< its entry; -1: none
        int textBegin; ///< in m_texts
    };

    void read(const Nodes::NodesCollection &project);
    void readNode(const Nodes::ConfigNode &node, int parent);
    std::vector<int> hits(const QList<QByteArray> &words) const;
    std::vector<int> candidates(const QList<QByteArray> &words) const;
    bool matches(int entry, const QByteArray &word) const;
    int rankOf(int entry, const QByteArray &word) const;
    QByteArray textOf(int entry) const;
    QByteArray nameOf(int entry) const;
    QByteArray pathOf(int entry) const;

    const Nodes::NodesCollection *m_project = nullptr; ///< never followed, only compared
    unsigned long m_token = 0;
    unsigned long m_revision = 0;
    std::vector<Entry> m_entries; ///< in tree order: parents before children
    QByteArray m_texts;           ///< folded: name, line feed, description, line feed; of each
};

} // namespace Editor
