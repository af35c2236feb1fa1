#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/windows/frames/WindowDecoration.h"

#include <QPointer>
#include <QString>
#include <QWidget>

class QDialog;

namespace Nodes {
class BasicWindow;
}

namespace Widgets {

class OverlayWidget;
class WindowBasic;

/// Decoration that the library draws itself: a frameless top-level window with a title bar, close
/// button and edges to drag, hosting one widget, which becomes its child and is owned by it.
/// Deleted when closed, unless Qt::WA_DeleteOnClose is switched off. Dimmed while another modal
/// window is up.
class WIDGETS_EXPORT FrameWindow : public QWidget, public WindowDecoration
{
    Q_OBJECT

public:
    class Frame;

    explicit FrameWindow(QWidget *parent = nullptr);
    /// Wraps a window: takes over its parent (`parent` stands in when it has none), modality and
    /// title. The client area stays where it was on the screen, unless the window's node asks to
    /// keep the frame's own size. Closes when the window is destroyed.
    FrameWindow(WindowBasic *window, QWidget *parent);
    ~FrameWindow() override;

    /// The hosted window; null while another kind of widget is hosted.
    WindowBasic *windowBasic() const;
    /// Node of the hosted window; null without one.
    Nodes::BasicWindow *getNode() const;
    QWidget *widget() const { return m_widget; }

    /// Width of the grip around title bar and hosted widget, pixels.
    int getFrameWidth() const;
    int getTitleHeight() const;
    /// Outer size around a hosted widget of that size.
    QSize outerSize(const QSize &client) const override;
    /// Place of the hosted widget in a window with that outer geometry.
    QRect clientArea(const QRect &outer) const;

    /// Hosts `widget` and takes its size; a widget hosted before is deleted.
    void setWidget(QWidget *widget);
    /// The same for a dialog, which also gives the title; the window closes when it finishes.
    void setDialog(QDialog *dialog);
    void setResizeableFrame(bool isResizeable);
    void setVisibleButtonClose(bool isVisible);
    /// Shows `title`. With `isOwn` it is kept when the hosted widget's own title changes later.
    void setWindowTitle(const QString &title, bool isOwn = false);

    /// Runs the hosted dialog modally and closes this window; its result, 0 without a dialog.
    int exec();

    /// False for a window that stays usable whatever else is up.
    void setDimmable(bool isDimmable) { m_isDimmable = isDimmable; }
    /// Dims or undims to match the overlay windows; called on each of their changes at run time.
    void updateOverlay();
    /// Null while not dimmed.
    OverlayWidget *overlay() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    void setVisible(bool isVisible) override;

public slots:
    /// What the close button does.
    void onClose();

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void adopt(QWidget *widget);
    void wrap(const WindowBasic &window);
    void placeParts();
    void takeHostedTitle(const QString &title);

    bool m_isDimmable = true;
    QString m_ownTitle;
    Frame *m_frame = nullptr;
    QPointer<QWidget> m_widget;
    QPointer<QDialog> m_dialog;
    QPointer<OverlayWidget> m_overlay;
};

} // namespace Widgets
