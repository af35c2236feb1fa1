#include "widgets/events/AlarmTone.h"

#include <QDataStream>
#include <QDir>
#include <QtMath>

#include <array>

namespace Widgets {

namespace {

constexpr int rate = 22050; // samples a second
constexpr int bytesOfSample = 2;
constexpr int fadeLength = rate / 100; // against clicks

/// Beeps one after the other, then a pause.
struct Melody
{
    std::array<int, 3> frequencies; // Hz; 0: no further beep
    double beep;                    // s
    double pause;
    double loudness; // of the full scale
};

constexpr std::array<Melody, AlarmTone::PriorityCount> melodies{{{{988, 740, 988}, 0.16, 0.30, 0.7},
                                                                 {{880, 660, 0}, 0.25, 0.9, 0.6},
                                                                 {{587, 0, 0}, 0.30, 1.7, 0.5},
                                                                 {{440, 0, 0}, 0.25, 3.75, 0.4}}};

int lengthOf(double seconds)
{
    return int(seconds * rate);
}

void appendBeep(QDataStream &stream, int frequency, const Melody &melody)
{
    const int length = lengthOf(melody.beep);
    for (int i = 0; i < length; ++i) {
        const double fade = qMin(1.0, double(qMin(i, length - 1 - i)) / fadeLength);
        const double wave = qSin(2 * M_PI * frequency * i / rate);
        stream << qint16(32767 * melody.loudness * fade * wave);
    }
}

QByteArray samples(const Melody &melody)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    for (const int frequency : melody.frequencies) {
        if (frequency > 0)
            appendBeep(stream, frequency, melody);
    }
    bytes.append(QByteArray(lengthOf(melody.pause) * bytesOfSample, '\0'));
    return bytes;
}

} // namespace

AlarmTone::AlarmTone(int priority)
    : m_priority(priority), m_file(QDir::temp().filePath(QStringLiteral("alarm-tone-XXXXXX.wav")))
{
    (void)prepare(); // while the disk has room
}

std::size_t AlarmTone::place(int priority)
{
    return std::size_t(qBound(1, priority, int(PriorityCount)) - 1);
}

QByteArray AlarmTone::wave(int priority)
{
    const QByteArray sound = samples(melodies[place(priority)]);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + sound.size());
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1 /* PCM */) << quint16(1 /* channel */) << quint32(rate)
           << quint32(rate * bytesOfSample) << quint16(bytesOfSample) << quint16(8 * bytesOfSample);
    stream.writeRawData("data", 4);
    stream << quint32(sound.size());
    return bytes + sound;
}

bool AlarmTone::prepare()
{
    if (!m_isWritten && m_file.open()) {
        const QByteArray bytes = wave(m_priority);
        m_isWritten = m_file.write(bytes) == bytes.size() && m_file.flush();
        m_file.close();
    }
    return m_isWritten;
}

} // namespace Widgets
