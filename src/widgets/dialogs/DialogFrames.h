#pragma once

#include "widgets/WidgetsExport.h"

class QDialog;

namespace Widgets {

/// Runs dialogs in the library's own decoration for those below the windows, which do not know it.
/// GUI thread.
class WIDGETS_EXPORT DialogFrames
{
public:
    using Run = int (*)(QDialog &dialog);

    /// Who runs them, for good. The result is for a static initialiser.
    static bool install(Run run);

    /// Runs the dialog modally, decorated; its result. It stays the caller's.
    static int exec(QDialog &dialog);
};

} // namespace Widgets
