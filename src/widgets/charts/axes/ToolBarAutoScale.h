#pragma once

#include "widgets/charts/axes/ToolBar.h"

namespace Widgets {

/// Switches the automatic scale of the axes of one direction.
class WIDGETS_EXPORT ToolBarAutoScale : public ToolBar
{
    Q_OBJECT

public:
    bool isAutoScale() const;
    void setAutoScale(bool on);
    void onUpdateProperties() override;

signals:
    void autoScaleChanged(bool on);

protected:
    ToolBarAutoScale(Nodes::widgetChart *chart, const QString &icon, const QString &tip,
                     QWidget *parent);
    /// Latched when all governed axes scale themselves by their configuration. Tells nobody: the
    /// axes have been set up by it already.
    void updateAutoScale();

private:
    QAction *m_autoScale;
};

} // namespace Widgets
