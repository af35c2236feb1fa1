#pragma once

#include "utils/UtilsExport.h"

#include "utils/settings/Configurator.h"

class QWidget;

namespace Utils {

/// Second base of windows that keep their place and size, and what else they choose, for the next
/// run. The window calls load() before it is shown and save() when it hides. GUI thread.
class UTILS_EXPORT ConfiguratorWindow : public Configurator
{
public:
    /// `window` is the object that has this base; it must be a top-level window.
    ConfiguratorWindow(QWidget *window, QString name, QString fileName);

    using Configurator::load;
    using Configurator::save;
    /// Gives the window its kept place, moved and shrunk onto a present screen when its own is
    /// gone. Without kept settings, or when they do not read, the window stays as it is. Failures
    /// are in the log.
    Nodes::Result load();
    Nodes::Result save() const;

protected:
    /// For what the window keeps besides its place; called at the end of load and save.
    virtual void readSettings(const QJsonObject &settings);
    virtual void writeSettings(QJsonObject &settings) const;

private:
    QWidget *m_window;
};

} // namespace Utils
