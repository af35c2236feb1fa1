#pragma once

#include "widgets/WidgetsExport.h"

#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWidget>

class QPushButton;

namespace Widgets {

/// Leads from one frame to the others that share its display: a narrow grip in the middle of the
/// upper edge, which opens to a row of buttons under a finger or a pointer that rests on it, so
/// that it covers nothing of the frame while it is not asked for.
class WIDGETS_EXPORT FrameTabs : public QWidget
{
    Q_OBJECT

public:
    /// Tabs of `frame` that lead to `frames`, itself included; none when it has its display for
    /// itself.
    static void renew(QWidget &frame, const QVector<QPointer<QWidget>> &frames);
    /// Null when the frame has none.
    static FrameTabs *of(const QWidget &frame);

    bool isOpen() const { return m_isOpen; }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    FrameTabs(QWidget &frame, const QVector<QPointer<QWidget>> &frames);
    void addButton(QWidget &frame);
    void setOpen(bool isOpen);
    void place();

    QVector<QPushButton *> m_buttons;
    QVector<QPointer<QWidget>> m_frames;
    bool m_isOpen = false;
    QTimer m_rest; ///< runs while the pointer rests on the grip
};

} // namespace Widgets
