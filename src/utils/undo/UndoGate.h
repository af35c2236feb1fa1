#pragma once

#include "utils/UtilsExport.h"

namespace Utils {

/// What IUndo::setGate has set, for who prepares an edit by something that cannot be undone. GUI
/// thread.
class UTILS_EXPORT UndoGate
{
public:
    /// Whether edits are taken now. When not, the host has told the user why.
    static bool isOpen();
};

} // namespace Utils
