#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidget>

#include <functional>

namespace Widgets {

/// What a finger takes hold of to move a limit of a zone: a grip on the canvas at its right edge,
/// above panner and cursors. Tells where it is dragged; the limit follows what it is told.
class WIDGETS_EXPORT ZoneHandle : public QWidget
{
    Q_OBJECT

public:
    static constexpr QSize Size{46, 28};

    /// `isUpper`: of an upper limit.
    ZoneHandle(bool isUpper, QWidget *canvas);

    /// At that height of the canvas; hidden when it is not on it.
    void place(double y);
    bool isDragged() const { return m_isDragged; }
    /// Number beside the grip while it is dragged; "" none.
    void setNumber(const QString &text);

signals:
    /// To that height of the canvas.
    void dragged(double y);
    void dropped();
    void cancelled();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void cancel();
    void fit();

    bool m_isUpper;
    bool m_isDragged = false;
    double m_grip = 0; // where in the handle it was taken hold of
    double m_y = 0;
    QString m_number;
};

} // namespace Widgets
