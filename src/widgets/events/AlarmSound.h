#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/events/AlarmSoundBook.h"
#include "widgets/events/AlarmTone.h"

#include "utils/relay/QueueRelay.h"

#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <array>
#include <memory>

namespace Widgets {

class AlarmPlayer;

/// Lets the alarms be heard until none waits any more. In place of a file that is missing or cannot
/// be played the built-in tone of its priority sounds, and the file is tried again by and by;
/// without an audio device one is waited for. Disks are asked on another thread. GUI thread.
class WIDGETS_EXPORT AlarmSound : public QObject
{
    Q_OBJECT

public:
    explicit AlarmSound(QObject *parent = nullptr);
    AlarmSound(std::unique_ptr<AlarmPlayer> player, QObject *parent);
    ~AlarmSound() override;

    /// What is to be heard from now on; silence stops at once.
    void setSounds(const AlarmSoundChoice &sounds);
    /// What is to be heard for them: the files, and the tone in place of those that cannot be.
    const QStringList &audible() const { return m_audible; }
    void setMuted(bool isMuted);
    bool isMuted() const { return m_isMuted; }
    /// Path of the built-in tone of that priority.
    QString tone(int priority) const { return toneOf(priority).file(); }

    /// Looks for the device and for what could not be played; happens by itself every 10 s.
    void retry();

private:
    enum enFileState { FileAsked, FilePresent, FileMissing, FileBroken };
    struct Answer
    {
        QString file;
        bool isPresent;
    };

    void ask(const QStringList &files);
    void onAnswers(const std::vector<Answer> &answers);
    void onFailed(const QString &file, const QString &reason);
    void follow();
    QStringList choose();
    void tell(const QString &file, const QString &reason);

    const AlarmTone &toneOf(int priority) const;

    AlarmSoundChoice m_sounds; // wanted
    QStringList m_audible;
    bool m_hasDevice = false; // when last looked for: a flood of alarms does not ask each time
    QHash<QString, enFileState> m_states;
    QSet<QString> m_told; // in the log
    bool m_isMuted = false;
    bool m_areTonesBroken = false;
    std::array<AlarmTone, AlarmTone::PriorityCount> m_tones;
    QTimer m_retry;    // runs while a sound is wanted
    QTimer m_patience; // with a disk that is asked
    Utils::QueueRelay<Answer> m_answers;
    std::unique_ptr<AlarmPlayer> m_player;
};

} // namespace Widgets
