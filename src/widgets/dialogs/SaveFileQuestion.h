#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>

class QWidget;

namespace Widgets {

/// Asks under which name a file is to be saved, in the operator's language; the directory chosen
/// last is proposed. GUI thread.
struct WIDGETS_EXPORT SaveFileQuestion
{
    QString caption;
    QString proposed; ///< name with its ending; what no file name may have is replaced
    QString ending;   ///< "csv"
    QString filter;   ///< "Таблица CSV (*.csv)"

    /// "" when the operator thinks better of it.
    QString ask(QWidget *parent) const;
    /// What an operator is told of a file that could not be written.
    static QString failure(const QString &file, const QString &reason);
};

} // namespace Widgets
