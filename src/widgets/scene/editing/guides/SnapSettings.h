#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/scene/editing/guides/Snapping.h"

#include "utils/settings/Configurator.h"

#include <QObject>

namespace Widgets {

/// What drags snap to in all edited scenes, as the user chose it; kept for the next run. GUI
/// thread.
class WIDGETS_EXPORT SnapSettings : public QObject, private Utils::Configurator
{
    Q_OBJECT

public:
    /// Those of the process. Tests make their own.
    static SnapSettings &process();
    /// File of the user's directory for configuration.
    explicit SnapSettings(const QString &fileName);

    /// Nothing snaps before somebody offers the user to turn it off: a scene shown by others drags
    /// pixel by pixel.
    bool isOffered() const { return m_isOffered; }
    void setOffered() { m_isOffered = true; }

    /// `visible` is empty and `distance` in pixels of the screen.
    const SnapOptions &options() const { return m_options; }
    /// The step of the grid is brought into its range.
    void setToGrid(bool on);
    void setGridStep(int pixels);
    void setToElements(bool on);

signals:
    void changed();

private:
    void set(const SnapOptions &options);

    SnapOptions m_options;
    bool m_isOffered = false;
};

} // namespace Widgets
