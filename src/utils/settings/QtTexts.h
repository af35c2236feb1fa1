#pragma once

#include "utils/UtilsExport.h"

class QCoreApplication;

namespace Utils {

/// The texts that Qt brings along (standard buttons, menus of fields, dialogs of files and colours)
/// in Russian, as all others are. GUI thread.
class UTILS_EXPORT QtTexts
{
public:
    /// For that application, to its end. False, and a line in the log, where Qt's translations are
    /// not installed: the texts stay English.
    static bool install(QCoreApplication &application);
};

} // namespace Utils
