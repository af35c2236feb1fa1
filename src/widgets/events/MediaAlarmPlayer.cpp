#include "widgets/events/MediaAlarmPlayer.h"

#include <QAudioDeviceInfo>
#include <QMediaPlayer>
#include <QMediaPlaylist>
#include <QSignalBlocker>
#include <QSoundEffect>
#include <QUrl>

#include <algorithm>

namespace Widgets {

MediaAlarmPlayer::MediaAlarmPlayer(QObject *parent) : AlarmPlayer(parent) {}

MediaAlarmPlayer::~MediaAlarmPlayer()
{
    stop();
}

bool MediaAlarmPlayer::hasDevice() const
{
    return !QAudioDeviceInfo::defaultOutputDevice().isNull();
}

void MediaAlarmPlayer::setMuted(bool isMuted)
{
    m_isMuted = isMuted;
    if (m_player)
        m_player->setMuted(isMuted);
    if (m_effect)
        m_effect->setMuted(isMuted);
}

void MediaAlarmPlayer::setFiles(const QStringList &files)
{
    const auto isGone = [&files](const QString &file) { return !files.contains(file); };
    if (std::any_of(m_queued.cbegin(), m_queued.cend(), isGone))
        stop();
    if (files.isEmpty())
        return;
    if (!m_player && !m_effect)
        makePlayer();
    if (m_player)
        playPlaylist(files);
    else
        playEffect(files.first());
}

void MediaAlarmPlayer::stop()
{
    if (m_player) {
        const QSignalBlocker blocker(m_player.get());
        m_player->stop();
        m_playlist->clear();
    }
    if (m_effect)
        m_effect->stop();
    m_queued.clear();
}

void MediaAlarmPlayer::playPlaylist(const QStringList &files)
{
    for (const QString &file : files) {
        if (m_queued.contains(file))
            continue;
        m_playlist->addMedia(QUrl::fromLocalFile(file));
        m_queued.append(file);
    }
    if (m_player->state() != QMediaPlayer::PlayingState)
        m_player->play();
}

void MediaAlarmPlayer::playEffect(const QString &file)
{
    if (m_queued.contains(file))
        return;
    m_queued = QStringList{file};
    m_effect->setSource(QUrl()); // one that failed is loaded again
    m_effect->setSource(QUrl::fromLocalFile(file));
    m_effect->play();
}

// Queued: a player must not be stopped from within its own signal.
void MediaAlarmPlayer::makePlayer()
{
    auto player = std::make_unique<QMediaPlayer>();
    if (player->isAvailable()) {
        m_player = std::move(player);
        m_playlist = std::make_unique<QMediaPlaylist>();
        m_playlist->setPlaybackMode(QMediaPlaylist::Loop);
        m_player->setPlaylist(m_playlist.get());
        connect(m_player.get(), QOverload<QMediaPlayer::Error>::of(&QMediaPlayer::error), this,
                &MediaAlarmPlayer::onPlayerError, Qt::QueuedConnection);
    } else {
        m_effect = std::make_unique<QSoundEffect>();
        m_effect->setLoopCount(QSoundEffect::Infinite);
        connect(m_effect.get(), &QSoundEffect::statusChanged, this,
                &MediaAlarmPlayer::onEffectStatus, Qt::QueuedConnection);
    }
    setMuted(m_isMuted);
}

// The player tells of an error late, and not always of which file: then none of them is to be
// relied on.
void MediaAlarmPlayer::onPlayerError()
{
    if (m_queued.isEmpty())
        return;
    const QString file = m_player->currentMedia().request().url().toLocalFile();
    const QString reason = m_player->errorString();
    const QStringList broken = m_queued.contains(file) ? QStringList{file} : m_queued;
    stop();
    for (const QString &each : broken)
        emit failed(each, reason);
}

void MediaAlarmPlayer::onEffectStatus()
{
    if (m_effect->status() != QSoundEffect::Error || m_queued.isEmpty())
        return;
    const QString file = m_queued.first();
    stop();
    emit failed(file, QStringLiteral("no playable sound"));
}

} // namespace Widgets
