#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/dialogs/BasicDialog.h"
#include "widgets/windows/frames/FrameWindow.h"

namespace Widgets {

/// Dialog with the library's own decoration, moved and resized like a frame window. Contents go
/// into content(); the close button rejects. Counts as an overlay window while it is up and modal.
class WIDGETS_EXPORT FrameDialog : public BasicDialog
{
    Q_OBJECT

public:
    explicit FrameDialog(QWidget *parent = nullptr);
    ~FrameDialog() override;

    /// Parent for the dialog's widgets; give it a layout.
    QWidget *content() const { return m_content; }
    void setResizeableFrame(bool isResizeable);
    void setVisibleButtonClose(bool isVisible);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    FrameWindow::Frame *m_frame;
    QWidget *m_content;
};

} // namespace Widgets
