#include "utils/ConfiguratorWindow.h"

#include <QDir>
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
    void damagedFileIsSetAside_data();
    void damagedFileIsSetAside();
    void unwritablePlaceIsReported();
    void windowComesBackOntoScreen_data();
    void windowComesBackOntoScreen();

private:
    QString path(const char *name = "config.json") const { return m_directory.filePath(name); }

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
    QVERIFY(Utils::Configurator("C", name).load(settings));
    QVERIFY(settings.isEmpty());
    const Utils::Configurator standard("A", "config.json");
    QVERIFY(QDir::isAbsolutePath(standard.settingsPath()));
}

void ConfiguratorTest::damagedFileIsSetAside_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isSavedOver"); // before anything loads
    QTest::addColumn<QString>("report");
    QTest::newRow("cut off") << QByteArray("{\"A\": {\"key\"") << false
                             << ": byte 12: unterminated string; it is kept as ";
    QTest::newRow("list") << QByteArray("[1]") << true << ": not a JSON object; it is kept as ";
}

void ConfiguratorTest::damagedFileIsSetAside()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isSavedOver);
    QFETCH(QString, report);
    const QString name = path(QTest::currentDataTag());
    for (const QString &kept : {name + ".damaged", name + ".damaged-2"}) {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        const Utils::Configurator configurator("A", name);
        QJsonObject settings{{"stale", 1}};
        QTest::ignoreMessage(QtWarningMsg, qUtf8Printable("settings file " + name + report + kept));
        if (!isSavedOver) {
            QCOMPARE(configurator.load(settings).GetType(), Nodes::Result::ParseError);
            QVERIFY(settings.isEmpty());
        }
        QVERIFY(configurator.save({{"key", 1}}));
        QFile aside(kept);
        QVERIFY(aside.open(QIODevice::ReadOnly));
        QCOMPARE(aside.readAll(), content);
    }
}

void ConfiguratorTest::unwritablePlaceIsReported()
{
    QFile file(path("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression("settings file .*cannot make the directory"));
    const Nodes::Result saved = Utils::Configurator("A", path("file/config.json")).save({});
    QCOMPARE(saved.GetType(), Nodes::Result::StorageError);
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
