#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QObject>
#include <QVector>

class QWidget;

namespace Widgets {

/// The modal windows that are up, process-wide. Frames dim themselves while one is up that is not
/// their own. Windows are referenced, never owned; one that is destroyed leaves by itself.
/// GUI thread.
class WIDGETS_EXPORT OverlayWindows : public QObject
{
    Q_OBJECT

public:
    static OverlayWindows &instance();

    /// `window` is up and modal; adding it again makes it the current one.
    void add(QWidget *window);
    void remove(QWidget *window);
    /// The modal window that came up last; null when none is up.
    QWidget *currentModal() const;
    /// Whether a modal window lies over `window`: any for the whole application, one for its own
    /// window only when `window` is that or an owner of it. Nothing lies over the newest itself.
    bool isBlocked(const QWidget &window) const;
    /// As configured in the visualisation subsystem; without one, black with alpha 128.
    QColor overlayColor() const;

signals:
    void changed();

private:
    explicit OverlayWindows(QObject *parent = nullptr);

    QVector<QWidget *> m_windows;
};

} // namespace Widgets
