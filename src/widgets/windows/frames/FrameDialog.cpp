#include "widgets/windows/frames/FrameDialog.h"

#include "widgets/windows/desktop/OverlayWindows.h"
#include "widgets/windows/frames/FrameWindowGrip.h"

#include <QEvent>

namespace Widgets {

FrameDialog::FrameDialog(QWidget *parent)
    : BasicDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      m_frame(new FrameWindow::Frame(this)),
      m_content(new QWidget(this))
{
    connect(m_frame, &FrameWindow::Frame::closeRequested, this, &QDialog::reject);
}

FrameDialog::~FrameDialog()
{
    OverlayWindows::instance().remove(this);
}

void FrameDialog::setResizeableFrame(bool isResizeable)
{
    m_frame->setResizeable(isResizeable);
}

void FrameDialog::setVisibleButtonClose(bool isVisible)
{
    m_frame->setVisibleButtonClose(isVisible);
}

QSize FrameDialog::sizeHint() const
{
    return m_frame->outerSize(m_content->sizeHint());
}

QSize FrameDialog::minimumSizeHint() const
{
    return m_frame->outerSize(m_content->minimumSizeHint());
}

void FrameDialog::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::WindowTitleChange)
        m_frame->setTitle(windowTitle());
    BasicDialog::changeEvent(event);
}

void FrameDialog::resizeEvent(QResizeEvent *event)
{
    m_frame->setGeometry(rect());
    m_content->setGeometry(m_frame->clientRect());
    BasicDialog::resizeEvent(event);
}

void FrameDialog::showEvent(QShowEvent *event)
{
    BasicDialog::showEvent(event);
    if (isModal())
        OverlayWindows::instance().add(this);
}

void FrameDialog::hideEvent(QHideEvent *event)
{
    OverlayWindows::instance().remove(this);
    BasicDialog::hideEvent(event);
}

} // namespace Widgets
