#include "widgets/events/AlarmTone.h"

#include <QDataStream>
#include <QDir>
#include <QtMath>

namespace Widgets {

namespace {

constexpr int rate = 22050; // samples a second
constexpr int bytesOfSample = 2;
constexpr int toneLength = rate / 4;
constexpr int pauseLength = rate / 2;
constexpr int fadeLength = rate / 100; // against clicks
constexpr double loudness = 0.6;

void appendTone(QDataStream &stream, double frequency)
{
    for (int i = 0; i < toneLength; ++i) {
        const double fade = qMin(1.0, double(qMin(i, toneLength - 1 - i)) / fadeLength);
        const double wave = qSin(2 * M_PI * frequency * i / rate);
        stream << qint16(32767 * loudness * fade * wave);
    }
}

} // namespace

AlarmTone::AlarmTone() : m_file(QDir::temp().filePath(QStringLiteral("alarm-tone-XXXXXX.wav")))
{
    (void)prepare(); // while the disk has room
}

QByteArray AlarmTone::wave()
{
    constexpr quint32 size = quint32(2 * toneLength + pauseLength) * bytesOfSample;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + size);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1 /* PCM */) << quint16(1 /* channel */) << quint32(rate)
           << quint32(rate * bytesOfSample) << quint16(bytesOfSample) << quint16(8 * bytesOfSample);
    stream.writeRawData("data", 4);
    stream << size;
    appendTone(stream, 880);
    appendTone(stream, 660);
    for (int i = 0; i < pauseLength; ++i)
        stream << qint16(0);
    return bytes;
}

bool AlarmTone::prepare()
{
    if (!m_isWritten && m_file.open()) {
        const QByteArray bytes = wave();
        m_isWritten = m_file.write(bytes) == bytes.size() && m_file.flush();
        m_file.close();
    }
    return m_isWritten;
}

} // namespace Widgets
