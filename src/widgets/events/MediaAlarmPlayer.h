#pragma once

#include "widgets/events/AlarmPlayer.h"

#include <memory>

class QMediaPlayer;
class QMediaPlaylist;
class QSoundEffect;

namespace Widgets {

/// Plays by the media player of the system, or, where none is installed, by a sound effect, which
/// takes one file at a time. GUI thread.
class MediaAlarmPlayer : public AlarmPlayer
{
    Q_OBJECT

public:
    explicit MediaAlarmPlayer(QObject *parent = nullptr);
    ~MediaAlarmPlayer() override;

    bool hasDevice() const override;
    void setFiles(const QStringList &files) override;
    void setMuted(bool isMuted) override;

private:
    void stop();
    void makePlayer();
    void playPlaylist(const QStringList &files);
    void playEffect(const QString &file);
    void onPlayerError();
    void onEffectStatus();

    QStringList m_queued; // in the playlist or the effect
    bool m_isMuted = false;
    std::unique_ptr<QMediaPlaylist> m_playlist;
    std::unique_ptr<QMediaPlayer> m_player; // null: the effect plays
    std::unique_ptr<QSoundEffect> m_effect;
};

} // namespace Widgets
