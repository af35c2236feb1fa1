#include "widgets/events/AlarmSound.h"

#include "widgets/events/MediaAlarmPlayer.h"

#include <QFileInfo>
#include <QLoggingCategory>
#include <QThreadPool>

#include <algorithm>

namespace Widgets {

namespace {

Q_LOGGING_CATEGORY(soundLog, "station.alarms.sound")

constexpr int retryPeriod = 10000; // ms
constexpr int patience = 500;      // ms

} // namespace

AlarmSound::AlarmSound(QObject *parent) : AlarmSound(std::make_unique<MediaAlarmPlayer>(), parent)
{
}

AlarmSound::AlarmSound(std::unique_ptr<AlarmPlayer> player, QObject *parent)
    : QObject(parent),
      m_tones{AlarmTone(1), AlarmTone(2), AlarmTone(3), AlarmTone(4)},
      m_answers([this](const std::vector<Answer> &answers) { onAnswers(answers); }),
      m_player(std::move(player))
{
    m_retry.setInterval(retryPeriod);
    connect(&m_retry, &QTimer::timeout, this, &AlarmSound::retry);
    m_patience.setInterval(patience);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this, &AlarmSound::follow);
    connect(m_player.get(), &AlarmPlayer::failed, this, &AlarmSound::onFailed);
}

AlarmSound::~AlarmSound() = default;

void AlarmSound::setSounds(const AlarmSoundChoice &sounds)
{
    if (sounds == m_sounds)
        return;
    m_sounds = sounds;
    if (sounds.isSilent()) {
        m_states.clear();
        m_told.clear();
        m_retry.stop();
        m_patience.stop();
    } else if (!m_retry.isActive()) {
        m_hasDevice = m_player->hasDevice();
        m_retry.start();
    }
    QStringList unknown;
    for (const QString &file : sounds.files) {
        if (!m_states.contains(file))
            unknown.append(file);
    }
    ask(unknown);
    follow();
}

void AlarmSound::setMuted(bool isMuted)
{
    m_isMuted = isMuted;
    m_player->setMuted(isMuted);
}

void AlarmSound::ask(const QStringList &files)
{
    if (files.isEmpty())
        return;
    for (const QString &file : files) {
        if (!m_states.contains(file)) {
            m_states.insert(file, FileAsked);
            m_patience.start();
        }
    }
    QThreadPool::globalInstance()->start([files, inlet = m_answers.inlet()] {
        for (const QString &file : files)
            inlet({file, QFileInfo(file).isFile()});
    });
}

void AlarmSound::onAnswers(const std::vector<Answer> &answers)
{
    for (const Answer &answer : answers) {
        if (!m_sounds.files.contains(answer.file))
            continue;
        m_states[answer.file] = answer.isPresent ? FilePresent : FileMissing;
        if (!answer.isPresent)
            tell(answer.file, QStringLiteral("no such file"));
    }
    follow();
}

void AlarmSound::onFailed(const QString &file, const QString &reason)
{
    const auto isTone = [&file](const AlarmTone &tone) { return tone.file() == file; };
    if (std::any_of(m_tones.begin(), m_tones.end(), isTone))
        m_areTonesBroken = true;
    else
        m_states[file] = FileBroken;
    tell(file, reason);
    follow();
}

void AlarmSound::tell(const QString &file, const QString &reason)
{
    if (m_told.contains(file))
        return;
    m_told.insert(file);
    qCWarning(soundLog, "cannot play %s, the built-in tone sounds instead: %s", qPrintable(file),
              qPrintable(reason));
}

void AlarmSound::retry()
{
    m_hasDevice = m_player->hasDevice();
    m_areTonesBroken = false;
    QStringList unplayed;
    for (auto state = m_states.cbegin(); state != m_states.cend(); ++state) {
        if (state.value() != FilePresent)
            unplayed.append(state.key());
    }
    ask(unplayed);
    follow();
}

const AlarmTone &AlarmSound::toneOf(int priority) const
{
    return m_tones[AlarmTone::place(priority)];
}

QStringList AlarmSound::choose()
{
    QStringList files;
    bool isToneWanted = m_sounds.hasTone;
    for (const QString &file : qAsConst(m_sounds.files)) {
        const enFileState state = m_states.value(file, FileAsked);
        if (state == FilePresent)
            files.append(file);
        else if (state != FileAsked || !m_patience.isActive())
            isToneWanted = true;
    }
    AlarmTone &tone = m_tones[AlarmTone::place(m_sounds.priority)];
    if (isToneWanted && !m_areTonesBroken && tone.prepare())
        files.append(tone.file());
    return files;
}

void AlarmSound::follow()
{
    m_audible = choose();
    m_player->setFiles(m_hasDevice ? m_audible : QStringList());
}

} // namespace Widgets
