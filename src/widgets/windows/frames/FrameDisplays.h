#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/frames/FrameMapping.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QVector>

class QScreen;
class QWidget;

namespace Widgets {

class FrameWidget;

/// The station's frames and the displays they are on. A frame whose display is not connected is
/// shown on the primary one, behind the frame that belongs there; tabs lead to it. Frames, windows
/// and dialogs follow displays that come, go or change. GUI thread.
class WIDGETS_EXPORT FrameDisplays : public QObject
{
    Q_OBJECT

public:
    explicit FrameDisplays(QObject *parent);
    ~FrameDisplays() override;

    /// Takes a frame made by StationFrames::create. It is not owned and may be destroyed.
    void add(QWidget *frame);
    /// Puts all frames on their displays and shows them in order, those without a display first.
    void show();

    /// The frame in front of those on that 0-based screen; null when there is none.
    QWidget *frameOn(int screen) const;
    /// How node coordinates are mapped there: as the frame is fitted, else as drawn.
    FrameMapping mappingOn(int screen) const;
    QVector<QPointer<QWidget>> frames() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Place
    {
        QPointer<QWidget> outer; // what stands on the desktop
        QPointer<FrameWidget> content;
        int display = 0; // 0-based, as configured
        bool isAway = false;
    };

    void watchScreen(QScreen *screen);
    void onScreenRemoved(QScreen *screen);
    void arrangeLater();
    void arrange();
    void takeDisplay(Place &place);
    void tellAway(const Place &place) const;
    void shareDisplays();
    void bringBackOthers();
    static bool standsByItself(const QWidget &window);
    QVector<QPointer<QWidget>> sharing(const QWidget &frame) const;

    QVector<Place> m_places;
    QVector<QPointer<QWidget>> m_recent; // the frame last in front first
    QRect m_gone;                        // of the screen unplugged since the last arrangement
    bool m_isDue = false;
};

} // namespace Widgets
