// The station among the windows of a desktop: what belongs together stays together and in reach,
// under window managers that stack differently.
#include "e2e/StationRig.h"
#include "support/Rows.h"

#include <QJsonObject>
#include <QtTest>

#include <map>

using namespace EndToEnd;

namespace {

const QString header = QStringLiteral("Заголовок");
const QString footer = QStringLiteral("Навигация");
const QString mimic = QStringLiteral("Мнемосхемы"); // the frame
const QString alarms = QStringLiteral("Тревоги");
const QString login = QStringLiteral("Авторизация");
const QString control = QStringLiteral("Управление котлом 1");

} // namespace

/// Each step runs on every desktop and goes on from where the last one left that desktop.
class StationDesktopTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data()
    {
        const Rows<QString> row("desktop");
        row("openbox", "openbox");
        row("xfwm4", "xfwm4");
    }
    void initTestCase()
    {
        for (const QString desktop : {"openbox", "xfwm4"})
            m_rigs[desktop].begin(desktop);
    }
    void init()
    {
        QFETCH_GLOBAL(QString, desktop);
        m_rig = &m_rigs.at(desktop);
    }
    void clickOnTheFrameHidesNothing()
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_rig->activeTitle(), mimic, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig->window(footer).isOpen, patience);
        clickElement(footer, "Управление К1");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig->window(control).isOpen, patience);
        fail("K1.Sim.Pump1Failure");
        m_rig->click({8, 1000}); // nothing is drawn there
        QTRY_COMPARE_WITH_TIMEOUT(m_rig->activeTitle(), mimic, patience);
        m_rig->grab({}, "clicked");
        QVERIFY(m_rig->closeAlarms());
        m_rig->click(m_rig->window(control).place.topRight() + QPoint(-16, -16));
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig->window(control).isOpen, patience);
    }
    void alarmsLeaveTheKeyboard()
    {
        clickElement(header, "Войти…");
        QTRY_COMPARE_WITH_TIMEOUT(m_rig->activeTitle(), login, patience);
        m_rig->type({}, "Return"); // no attempt yet
        m_rig->type("11", "1");
        fail("Sim.NetPump1Failure");
        m_rig->grab({}, "alarm-over-login");
        QCOMPARE(m_rig->activeTitle(), login);
        m_rig->type("1", "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig->hasTitle(login), patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig->window(header).textOf("Пользователь"),
                                  QStringLiteral("Оператор смены"), patience);
        QVERIFY(m_rig->hasTitle(alarms));
    }
    void acknowledgesWhileADialogIsOpen()
    {
        clickElement(header, "Войти…");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig->hasTitle(login), patience);
        QVERIFY(alarmsThatAre("unacknowledged") > 0);
        m_rig->grab({}, "login-over-alarms");
        // What follows from a fault may come meanwhile.
        QTRY_VERIFY_WITH_TIMEOUT(acknowledgedAll(), patience);
        QVERIFY(m_rig->closeAlarms());
        QVERIFY(m_rig->hasTitle(login));
        m_rig->type({}, "Escape");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig->hasTitle(login), patience);
    }
    void frameStaysWithoutTheRight()
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_rig->activeTitle(), mimic, patience);
        m_rig->type({}, "alt+F4");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig->hasTitle("Ошибка"), patience);
        m_rig->grab({}, "refused-end");
        QVERIFY(m_rig->hasTitle(mimic));
        QVERIFY(m_rig->isStationRunning());
    }
    void endsOrderly()
    {
        QVERIFY(m_rig->stopStation());
        QCOMPARE(m_rig->status()["state"].toString(), QStringLiteral("stopped"));
    }

private:
    int alarmsThatAre(const char *state) const
    {
        return m_rig->status()["alarms"].toObject()[state].toInt(-1);
    }
    bool acknowledgedAll() const
    {
        if (alarmsThatAre("unacknowledged") > 0)
            m_rig->clickInAlarms(60);
        return alarmsThatAre("unacknowledged") == 0;
    }
    void fail(const char *what) const
    {
        const int before = alarmsThatAre("active");
        m_rig->plant().write(what, 1.0);
        QTRY_VERIFY_WITH_TIMEOUT(alarmsThatAre("active") > before, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig->hasTitle(alarms), patience);
    }
    void clickElement(const QString &window, const QString &element) const
    {
        m_rig->click(m_rig->project().centreOf(window, element));
    }

    std::map<QString, StationRig> m_rigs;
    StationRig *m_rig = nullptr;
};

QTEST_GUILESS_MAIN(StationDesktopTest)
#include "tst_station_desktop.moc"
