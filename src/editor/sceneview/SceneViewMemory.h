#pragma once

#include <QPointF>
#include <QString>

#include <optional>

namespace Nodes {
class ConfigNode;
}

namespace Editor {

/// Zoom and place at which scenes were looked at last, kept for the next time they are opened, of
/// the scenes seen last. GUI thread.
class SceneViewMemory
{
public:
    static constexpr int KeptAtMost = 200;

    struct Place
    {
        int percent = 100; ///< 0: the whole page fills the view
        QPointF centre;    ///< scene pixels
    };

    /// `fileName` lies in the user's directory for configuration.
    explicit SceneViewMemory(QString fileName = QStringLiteral("configurator-scenes.json"));

    std::optional<Place> recall(const Nodes::ConfigNode &scene) const;
    void keep(const Nodes::ConfigNode &scene, const Place &place) const;

private:
    QString m_fileName;
};

} // namespace Editor
