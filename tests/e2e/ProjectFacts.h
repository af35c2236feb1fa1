#pragma once

#include <QHash>
#include <QRect>
#include <QSet>
#include <QString>

class QXmlStreamReader;

namespace EndToEnd {

/// What the project file says, read without the node model: where elements stand and what is in
/// which window, so that the test needs no coordinates and no ids of its own.
class ProjectFacts
{
public:
    [[nodiscard]] bool read(const QString &file);

    /// Centre of an element on the screen; its window has to stand where it is configured.
    QPoint centreOf(const QString &window, const QString &element) const;
    /// Place of an element within its window.
    QRect placeIn(const QString &window, const QString &element) const;
    /// Ids of the elements that show a signal, of a window or composition.
    QSet<int> boundIn(const QString &container) const { return m_bound.value(container); }
    /// Whether an element shows a value that comes over the line.
    bool isRemote(int element) const { return m_remoteSignals.contains(m_signals.value(element)); }

private:
    void take(const QXmlStreamReader &xml, const QString &container);

    QHash<QString, QRect> m_places; // "container/element"
    QHash<QString, QSet<int>> m_bound;
    QHash<int, int> m_signals; // element id -> signal id
    QSet<int> m_remoteSignals;
};

} // namespace EndToEnd
