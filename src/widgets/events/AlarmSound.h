#pragma once

#include "widgets/WidgetsExport.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <memory>

class QMediaPlayer;
class QMediaPlaylist;
class QSoundEffect;

namespace Widgets {

/// Repeats sound files, one after the other, until none is wanted any more. Without an audio device
/// it waits for one; a file that cannot be played is logged once and left out. GUI thread.
class WIDGETS_EXPORT AlarmSound : public QObject
{
    Q_OBJECT

public:
    explicit AlarmSound(QObject *parent = nullptr);
    ~AlarmSound() override;

    /// Existing files to be heard from now on; none stops at once. Files that stay play on.
    void setFiles(const QStringList &files);
    const QStringList &files() const { return m_files; }
    void setMuted(bool isMuted);
    bool isMuted() const { return m_isMuted; }

private:
    void follow();
    void stop();
    void play();
    void playPlaylist(const QStringList &files);
    void playEffect(const QString &file);
    void makePlayer();
    void onPlayerError();

    QStringList m_files;  // wanted
    QStringList m_queued; // in the playlist or the effect
    QStringList m_failed; // told once
    bool m_isMuted = false;
    QTimer m_deviceCheck; // runs while a sound is wanted and there is no device
    std::unique_ptr<QMediaPlaylist> m_playlist;
    std::unique_ptr<QMediaPlayer> m_player; // null: the effect plays
    std::unique_ptr<QSoundEffect> m_effect;
};

} // namespace Widgets
