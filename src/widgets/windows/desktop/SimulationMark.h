#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>

class QWidget;

namespace Widgets {

/// While it lives everything on screen says that its values are made up: "ИМИТАЦИЯ" stands at the
/// upper edge of every frame, above whatever it shows, lets every press through, and begins the
/// title of every window, whoever changes it. Made before the windows. GUI thread.
class WIDGETS_EXPORT SimulationMark : public QObject
{
    Q_OBJECT

public:
    explicit SimulationMark(QObject *parent = nullptr);
    ~SimulationMark() override;

    bool eventFilter(QObject *watched, QEvent *event) override;

    static QString text() { return QStringLiteral("ИМИТАЦИЯ"); }

private:
    static void markTitle(QWidget &window);
    static void markContent(QWidget &window);
};

} // namespace Widgets
