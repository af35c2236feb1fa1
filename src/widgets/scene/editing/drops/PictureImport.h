#pragma once

#include "widgets/WidgetsExport.h"

#include <QSize>
#include <QString>
#include <QStringList>

class QMimeData;

namespace Widgets {

/// Brings picture files from the desktop into a project: what an element shows has to lie in the
/// project's directory, where it goes along with every copy of it. GUI thread.
class WIDGETS_EXPORT PictureImport
{
public:
    /// Below the project's directory.
    static constexpr const char *Folder = "images";

    struct Imported
    {
        QString file;          ///< relative to the project's directory; "" when it was refused
        QString name;          ///< what an element that shows it may be called
        QString refusal;       ///< Russian: which file, why, what to do
        QSize size;            ///< in pixels; empty for a vector picture
        bool isSymbol = false; ///< a vector picture that can be a symbol
    };

    /// Local files of a drag; none for other drags.
    static QStringList filesOf(const QMimeData &data);
    /// Copies the file there, as a whole or not at all. One that lies in the project stays where it
    /// is, one of the same content is used again; another one of that name gets a number.
    static Imported take(const QString &file, const QString &projectDirectory);
};

} // namespace Widgets
