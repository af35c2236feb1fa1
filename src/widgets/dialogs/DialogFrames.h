#pragma once

#include "widgets/WidgetsExport.h"

class QDialog;
class QWidget;

namespace Widgets {

/// Runs dialogs in the library's own decoration for those below the windows, which do not know it.
/// GUI thread.
class WIDGETS_EXPORT DialogFrames
{
public:
    using Run = int (*)(QDialog &dialog);
    using Open = void (*)(QDialog &dialog, QWidget &over);

    /// Who runs them, for good. The result is for a static initialiser.
    static bool install(Run run, Open open);

    /// Runs the dialog modally, decorated; its result. It stays the caller's.
    static int exec(QDialog &dialog);
    /// Opens the dialog, decorated, over the middle of a window, which it blocks and belongs to;
    /// returns at once. It has the focus and is deleted with its decoration when it is finished.
    /// What it shows is to be complete by then.
    static void open(QDialog &dialog, QWidget &over);
};

} // namespace Widgets
