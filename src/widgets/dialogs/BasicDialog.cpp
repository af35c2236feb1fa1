#include "widgets/dialogs/BasicDialog.h"

#include "widgets/dialogs/DialogLook.h"

namespace Widgets {

BasicDialog::BasicDialog(QWidget *parent, Qt::WindowFlags flags)
    : QDialog(parent, flags), DialogManners(static_cast<QWidget &>(*this))
{
    ApplyDialogLook(*this);
}

void BasicDialog::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    settle();
}

void BasicDialog::keyPressEvent(QKeyEvent *event)
{
    if (!takesKey(*event))
        QDialog::keyPressEvent(event);
}

} // namespace Widgets
