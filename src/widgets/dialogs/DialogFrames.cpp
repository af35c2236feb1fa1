#include "widgets/dialogs/DialogFrames.h"

#include <QDialog>

namespace Widgets {

namespace {

struct Decorator
{
    DialogFrames::Run run = nullptr;
    DialogFrames::Open open = nullptr;
};

Decorator &decorator()
{
    static Decorator installed;
    return installed;
}

} // namespace

bool DialogFrames::install(Run run, Open open)
{
    decorator() = {run, open};
    return true;
}

int DialogFrames::exec(QDialog &dialog)
{
    return decorator().run ? decorator().run(dialog) : dialog.exec();
}

void DialogFrames::open(QDialog &dialog, QWidget &over)
{
    if (decorator().open)
        return decorator().open(dialog, over);
    dialog.setAttribute(Qt::WA_DeleteOnClose);
    dialog.open();
}

} // namespace Widgets
