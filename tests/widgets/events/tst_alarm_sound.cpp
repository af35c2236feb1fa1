#include "support/Rows.h"

#include "widgets/events/AlarmPlayer.h"
#include "widgets/events/AlarmSound.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Widgets;

using SoundingAlarms = QVector<QPair<int, QString>>;
Q_DECLARE_METATYPE(SoundingAlarms)

namespace {

/// Notes what it is asked to play.
class NotingPlayer : public AlarmPlayer
{
public:
    bool hasDevice() const override { return isConnected; }
    void setFiles(const QStringList &files) override { played = files; }
    void setMuted(bool) override {}

    bool isConnected = true;
    QStringList played;
};

} // namespace

class TestAlarmSound : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        auto player = std::make_unique<NotingPlayer>();
        m_player = player.get();
        m_sound = std::make_unique<AlarmSound>(std::move(player), nullptr);
        m_directory = std::make_unique<QTemporaryDir>();
    }
    void missingFileIsReplacedUntilItIsThere()
    {
        const QString there = file("a.wav");
        const QString missing = file("b.wav", false);
        m_sound->setSounds({2, {there, missing}});
        QTRY_COMPARE(m_player->played, QStringList({there, m_sound->tone(2)}));
        (void)file("b.wav");
        m_sound->retry();
        QTRY_COMPARE(m_player->played, QStringList({there, missing}));
        m_sound->setSounds({});
        QCOMPARE(m_player->played, QStringList());
    }
    void brokenFileIsReplacedAndTriedAgain()
    {
        const QString broken = file("a.wav");
        m_sound->setSounds({1, {broken}});
        QTRY_COMPARE(m_player->played, QStringList(broken));
        for (int time = 0; time < 2; ++time) {
            emit m_player->failed(broken, "no sound");
            QCOMPARE(m_player->played, QStringList(m_sound->tone(1)));
            m_sound->retry();
            QTRY_COMPARE(m_player->played, QStringList(broken));
        }
    }
    void waitsForADevice()
    {
        const QString there = file("a.wav");
        m_player->isConnected = false;
        m_sound->setSounds({1, {there}});
        QTRY_COMPARE(m_sound->audible(), QStringList(there));
        QCOMPARE(m_player->played, QStringList());
        m_player->isConnected = true;
        m_sound->retry();
        QCOMPARE(m_player->played, QStringList(there));
    }
    // What is less urgent does not mix in; a file is heard once for any number of alarms.
    void choosesTheMostUrgent_data()
    {
        const Rows<SoundingAlarms, int, QStringList, bool> row("alarms", "priority", "files",
                                                               "hasTone");
        row("none", {}, 0, {}, false);
        row("one file", {{3, "a"}}, 3, {"a"}, false);
        row("no file", {{4, ""}}, 4, {}, true);
        row("the higher", {{2, "b"}, {1, "a"}, {3, "c"}}, 1, {"a"}, false);
        row("two of it", {{2, "b"}, {2, "a"}, {2, "a"}, {4, ""}}, 2, {"a", "b"}, false);
        row("and the tone", {{1, "b"}, {1, ""}}, 1, {"b"}, true);
    }
    void choosesTheMostUrgent()
    {
        QFETCH(SoundingAlarms, alarms);
        AlarmSoundBook book;
        for (const auto &[priority, file] : alarms)
            book.count(priority, file, 1);
        QTEST(book.choice().priority, "priority");
        QTEST(book.choice().files, "files");
        QTEST(book.choice().hasTone, "hasTone");
        for (const auto &[priority, file] : alarms)
            book.count(priority, file, -1);
        QVERIFY(book.choice().isSilent());
    }
    void toneIsASound_data()
    {
        const Rows<int> row("priority");
        for (int priority = 1; priority <= AlarmTone::PriorityCount; ++priority)
            row(qPrintable(QString::number(priority)), priority);
    }
    void toneIsASound()
    {
        QFETCH(int, priority);
        m_sound->setSounds({priority, {}, true});
        QCOMPARE(m_player->played, QStringList(m_sound->tone(priority)));
        QFile tone(m_sound->tone(priority));
        QVERIFY(tone.open(QIODevice::ReadOnly));
        const QByteArray bytes = tone.readAll();
        QCOMPARE(bytes.left(4) + bytes.mid(8, 8), QByteArray("RIFFWAVEfmt "));
        const auto number = [&bytes](int at) {
            return qFromLittleEndian<quint32>(bytes.data() + at);
        };
        QCOMPARE(int(number(4)), bytes.size() - 8);
        QCOMPARE(int(number(40)), bytes.size() - 44);
        int loudest = 0;
        for (int at = 44; at < bytes.size(); at += 2)
            loudest = qMax(loudest, qAbs(int(qFromLittleEndian<qint16>(bytes.data() + at))));
        QVERIFY(loudest > 12000 && loudest < 32767);
    }

private:
    QString file(const char *name, bool isPresent = true) const
    {
        QFile file(m_directory->filePath(name));
        if (isPresent && !file.open(QIODevice::WriteOnly))
            qFatal("%s", qPrintable(file.errorString()));
        return file.fileName();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<AlarmSound> m_sound;
    NotingPlayer *m_player = nullptr;
};

QTEST_MAIN(TestAlarmSound)
#include "tst_alarm_sound.moc"
