#pragma once

#include <QSet>
#include <QString>

namespace Editor {

/// What was expanded in the trees of the projects opened last, by the projects' identity, kept for
/// the next session. GUI thread.
class TreeMemory
{
public:
    static constexpr int KeptProjects = 30;
    static constexpr int KeptNodes = 2000; ///< of each

    /// `fileName` lies in the user's directory for configuration.
    explicit TreeMemory(QString fileName = QStringLiteral("configurator-tree.json"));

    /// Ids of nodes; none for a project that is not known.
    QSet<quint64> recall(const QString &project) const;
    /// A failure is in the log, and costs nothing but the memory.
    void keep(const QString &project, const QSet<quint64> &expanded) const;

private:
    QString m_fileName;
};

} // namespace Editor
