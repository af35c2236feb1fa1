#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QWidget>

namespace Widgets {

/// Dims the widget it lies on: covers it whole, follows its size and paints one translucent colour.
class WIDGETS_EXPORT OverlayWidget : public QWidget
{
    Q_OBJECT

public:
    /// `parent` is what is dimmed and must not be null; it owns the overlay.
    explicit OverlayWidget(QWidget *parent);

    QColor color() const { return m_color; }
    void setColor(const QColor &color);

    /// Overlay that `window` needs now: a new one while a modal window blocks it, else null.
    /// `previous` (may be null) is deleted.
    [[nodiscard]] static OverlayWidget *renew(QWidget &window, OverlayWidget *previous);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_color{0, 0, 0, 128};
};

} // namespace Widgets
