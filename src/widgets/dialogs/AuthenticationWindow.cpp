#include "widgets/dialogs/AuthenticationWindow.h"

#include "widgets/dialogs/AuthenticationDialog.h"

AuthenticationWindow::AuthenticationWindow(QWidget *parent)
    : FrameWindow(parent),
      DialogManners(static_cast<QWidget &>(*this)),
      m_dialog(new AuthenticationDialog(parent))
{
    setAttribute(Qt::WA_DeleteOnClose, false);
    setDialog(m_dialog);
}

AuthenticationWindow::~AuthenticationWindow()
{
    m_dialog->setParent(nullptr);
    delete m_dialog;
}

void AuthenticationWindow::setNode(Nodes::BasicNode *node)
{
    m_dialog->setNode(node);
    resize(outerSize(m_dialog->size()));
}

void AuthenticationWindow::showEvent(QShowEvent *event)
{
    FrameWindow::showEvent(event);
    settle();
}
