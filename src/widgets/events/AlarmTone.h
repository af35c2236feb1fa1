#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>
#include <QTemporaryFile>

namespace Widgets {

/// The sound of alarms whose own cannot be played: two tones and a pause, made by computation and
/// kept in a temporary file while this lives.
class WIDGETS_EXPORT AlarmTone
{
public:
    AlarmTone();

    /// Writes the file unless that was done. False when there is no room for it.
    bool prepare();
    /// Path of a WAV file; "" while it could not be written.
    QString file() const { return m_isWritten ? m_file.fileName() : QString(); }
    /// Content of that file.
    static QByteArray wave();

private:
    QTemporaryFile m_file;
    bool m_isWritten = false;
};

} // namespace Widgets
