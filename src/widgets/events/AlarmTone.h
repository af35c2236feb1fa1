#pragma once

#include "widgets/WidgetsExport.h"

#include <QString>
#include <QTemporaryFile>

namespace Widgets {

/// The sound of alarms of one priority that have none of their own or whose own cannot be played,
/// made by computation and kept in a temporary file while this lives. The more urgent, the higher,
/// the more often and the sooner again.
class WIDGETS_EXPORT AlarmTone
{
public:
    static constexpr int PriorityCount = 4;

    /// 1 highest to 4 lowest; others sound as the nearest of these.
    explicit AlarmTone(int priority = 1);

    /// Place of that priority in an array of tones.
    static std::size_t place(int priority);

    /// Writes the file unless that was done. False when there is no room for it.
    bool prepare();
    /// Path of a WAV file; "" while it could not be written.
    QString file() const { return m_isWritten ? m_file.fileName() : QString(); }
    /// Content of the file of that priority.
    static QByteArray wave(int priority);

private:
    int m_priority;
    QTemporaryFile m_file;
    bool m_isWritten = false;
};

} // namespace Widgets
