#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QStringList>

namespace Widgets {

/// Plays sound files over and over. GUI thread.
class WIDGETS_EXPORT AlarmPlayer : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether there is anything to play on.
    virtual bool hasDevice() const = 0;
    /// Files to be heard from now on, in turn; none stops at once. Files that stay play on.
    virtual void setFiles(const QStringList &files) = 0;
    virtual void setMuted(bool isMuted) = 0;

signals:
    /// The file cannot be played; it is still wanted.
    void failed(const QString &file, const QString &reason);
};

} // namespace Widgets
