#include "utils/settings/ConfiguratorWindow.h"

#include <QScreen>
#include <QTemporaryDir>
#include <QWidget>
#include <QtTest>

namespace {

struct KeptWindow : QWidget, Utils::ConfiguratorWindow
{
    explicit KeptWindow(const QString &path) : ConfiguratorWindow(this, "Kept", path) {}
    void readSettings(const QJsonObject &settings) override { sound = settings["sound"].toInt(); }
    void writeSettings(QJsonObject &settings) const override { settings["sound"] = sound; }
    int sound = 1;
};

} // namespace

class ConfiguratorTest : public QObject
{
    Q_OBJECT

private slots:
    void objectsShareFile();
    void damagedFileIsSetAside();
    void windowComesBackOntoScreen_data();
    void windowComesBackOntoScreen();

private:
    QString path(const char *name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

void ConfiguratorTest::objectsShareFile()
{
    const QString name = path("new/config.json");
    QVERIFY(Utils::Configurator("A", name).save({{"key", "один"}}));
    QVERIFY(Utils::Configurator("B", name).save({{"key", 2}}));
    QVERIFY(Utils::Configurator("A", name).save({{"other", true}}));
    QJsonObject settings;
    QVERIFY(Utils::Configurator("A", name).load(settings));
    QCOMPARE(settings, (QJsonObject{{"other", true}}));
    QVERIFY(Utils::Configurator("B", name).load(settings));
    QCOMPARE(settings, (QJsonObject{{"key", 2}}));
}

void ConfiguratorTest::damagedFileIsSetAside()
{
    const QString name = path("damaged.json");
    for (const QString &kept : {name + ".damaged", name + ".damaged-2"}) {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(kept.toUtf8()) > 0);
        file.close();
        QJsonObject settings{{"stale", 1}};
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("byte 1: .* kept as " + kept));
        QCOMPARE(Utils::Configurator("A", name).load(settings), Nodes::Result::ParseError);
        QVERIFY(settings.isEmpty());
        QFile aside(kept);
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QCOMPARE(aside.readAll(), kept.toUtf8());
    }
}

void ConfiguratorTest::windowComesBackOntoScreen_data()
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QTest::addColumn<QRect>("kept");
    QTest::addColumn<QRect>("restored");
    QTest::newRow("as it was") << QRect(30, 40, 300, 200) << QRect(30, 40, 300, 200);
    QTest::newRow("screen gone") << QRect(9000, 50, 300, 200)
                                 << QRect(screen.right() - 299, 50, 300, 200);
    QTest::newRow("too large") << QRect(-500, -500, 5000, 5000) << screen;
}

void ConfiguratorTest::windowComesBackOntoScreen()
{
    QFETCH(QRect, kept);
    KeptWindow window(path("windows.json"));
    window.setGeometry(kept);
    window.sound = 7;
    QVERIFY(window.save());
    KeptWindow next(path("windows.json"));
    QVERIFY(next.load());
    QTEST(next.geometry(), "restored");
    QCOMPARE(next.sound, 7);
}

QTEST_MAIN(ConfiguratorTest)
#include "tst_configurator.moc"
