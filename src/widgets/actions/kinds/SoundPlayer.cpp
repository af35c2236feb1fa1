#include "widgets/actions/kinds/SoundPlayer.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSoundEffect>
#include <QUrl>

#include <utility>

namespace Widgets {

SoundPlayer &SoundPlayer::instance()
{
    static QPointer<SoundPlayer> shared;
    if (!shared)
        shared = new SoundPlayer(QCoreApplication::instance());
    return *shared;
}

SoundPlayer::SoundPlayer(QObject *parent) : QObject(parent), m_effect(new QSoundEffect(this))
{
    m_effect->setVolume(1.0);
    connect(m_effect, &QSoundEffect::statusChanged, this, &SoundPlayer::settle);
}

void SoundPlayer::play(const QString &file, std::function<void(bool)> told)
{
    m_told = nullptr;
    m_effect->stop();
    if (m_effect->status() == QSoundEffect::Error)
        m_effect->setSource(QUrl()); // the file may have been replaced since
    m_told = std::move(told);
    m_effect->setSource(QUrl::fromLocalFile(file));
    m_effect->play();
    settle();
}

void SoundPlayer::settle()
{
    const QSoundEffect::Status status = m_effect->status();
    if (!m_told || (status != QSoundEffect::Ready && status != QSoundEffect::Error))
        return;
    std::exchange(m_told, nullptr)(status == QSoundEffect::Ready);
}

} // namespace Widgets
