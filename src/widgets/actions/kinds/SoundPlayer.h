#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>

#include <functional>

class QSoundEffect;

namespace Widgets {

/// The station's one voice: a new sound cuts the last. GUI thread; goes with the application.
class WIDGETS_EXPORT SoundPlayer : public QObject
{
    Q_OBJECT

public:
    static SoundPlayer &instance();
    explicit SoundPlayer(QObject *parent);

    /// Plays the file once. `told` hears later, or at once, whether it is a sound; never when
    /// another one cut it before that was known, or there is no audio device.
    void play(const QString &file, std::function<void(bool isSound)> told);

private:
    void settle();

    QSoundEffect *m_effect;
    std::function<void(bool)> m_told; ///< empty once told
};

} // namespace Widgets
