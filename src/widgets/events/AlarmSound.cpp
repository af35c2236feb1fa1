#include "widgets/events/AlarmSound.h"

#include <QAudioDeviceInfo>
#include <QLoggingCategory>
#include <QMediaPlayer>
#include <QMediaPlaylist>
#include <QSignalBlocker>
#include <QSoundEffect>
#include <QUrl>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(soundLog, "station.alarms.sound")

constexpr int devicePeriod = 10000; // ms

} // namespace

AlarmSound::AlarmSound(QObject *parent) : QObject(parent)
{
    m_deviceCheck.setInterval(devicePeriod);
    connect(&m_deviceCheck, &QTimer::timeout, this, &AlarmSound::follow);
}

AlarmSound::~AlarmSound()
{
    stop();
}

void AlarmSound::setFiles(const QStringList &files)
{
    if (files == m_files)
        return;
    m_files = files;
    // While a device is waited for, a flood of alarms does not ask for it with each of them.
    if (files.isEmpty() || !m_deviceCheck.isActive())
        follow();
}

void AlarmSound::setMuted(bool isMuted)
{
    m_isMuted = isMuted;
    if (m_player)
        m_player->setMuted(isMuted);
    if (m_effect)
        m_effect->setMuted(isMuted);
}

void AlarmSound::follow()
{
    m_deviceCheck.stop();
    if (m_files.isEmpty()) {
        stop();
        m_failed.clear();
    } else if (QAudioDeviceInfo::defaultOutputDevice().isNull()) {
        m_deviceCheck.start();
    } else {
        play();
    }
}

void AlarmSound::stop()
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

void AlarmSound::play()
{
    QStringList playable;
    for (const QString &file : qAsConst(m_files)) {
        if (!m_failed.contains(file))
            playable.append(file);
    }
    for (const QString &file : qAsConst(m_queued)) {
        if (playable.contains(file))
            continue;
        stop();
        break;
    }
    if (playable.isEmpty())
        return;
    if (!m_player && !m_effect)
        makePlayer();
    if (m_player)
        playPlaylist(playable);
    else
        playEffect(playable.first());
}

void AlarmSound::playPlaylist(const QStringList &files)
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

void AlarmSound::playEffect(const QString &file)
{
    if (m_queued.contains(file))
        return;
    m_queued = QStringList{file};
    m_effect->setSource(QUrl::fromLocalFile(file));
    m_effect->play();
}

void AlarmSound::makePlayer()
{
    auto player = std::make_unique<QMediaPlayer>();
    if (player->isAvailable()) {
        m_player = std::move(player);
        m_playlist = std::make_unique<QMediaPlaylist>();
        m_playlist->setPlaybackMode(QMediaPlaylist::Loop);
        m_player->setPlaylist(m_playlist.get());
        // Queued: the player must not be stopped from within its own signal.
        connect(m_player.get(), QOverload<QMediaPlayer::Error>::of(&QMediaPlayer::error), this,
                &AlarmSound::onPlayerError, Qt::QueuedConnection);
    } else {
        m_effect = std::make_unique<QSoundEffect>();
        m_effect->setLoopCount(QSoundEffect::Infinite);
    }
    setMuted(m_isMuted);
}

void AlarmSound::onPlayerError()
{
    const QString file = m_player->currentMedia().request().url().toLocalFile();
    const QStringList failed = m_queued.contains(file) ? QStringList{file} : m_queued;
    for (const QString &each : failed)
        qCWarning(soundLog, "cannot play %s: %s", qPrintable(each),
                  qPrintable(m_player->errorString()));
    m_failed += failed;
    stop();
    follow();
}

} // namespace Widgets
