#include "widgets/dialogs/DialogFrames.h"

#include <QDialog>

namespace Widgets {

namespace {

DialogFrames::Run &runner()
{
    static DialogFrames::Run installed = nullptr;
    return installed;
}

} // namespace

bool DialogFrames::install(Run run)
{
    runner() = run;
    return true;
}

int DialogFrames::exec(QDialog &dialog)
{
    return runner() ? runner()(dialog) : dialog.exec();
}

} // namespace Widgets
