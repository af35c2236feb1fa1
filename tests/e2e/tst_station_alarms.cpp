// A fault of the plant on its way to the operator and back: the element, the banner, the page that
// the banner leads to, the acknowledgement and what the journal keeps of it.
#include "e2e/StationRig.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace EndToEnd;

namespace {

const QString header = QStringLiteral("Заголовок");
const QString footer = QStringLiteral("Навигация");
const QString schematic = QStringLiteral("Мнемосхема");
const QString overview = QStringLiteral("Котельная");
const QString alarms = QStringLiteral("Тревоги");
const QString question = QStringLiteral("Квитирование тревоги");
const QString login = QStringLiteral("Авторизация");
const QString banner = QStringLiteral("Строка тревог");
const QString comment = QStringLiteral("fitter called, pump 2 runs");
const QString pump = QStringLiteral("Состояние Net.Pump1.Fault");

const QColor pumpPriority(255, 224, 120); // the third
const QColor jumpMark(0x0b, 0x4f, 0xb3);

int count(const QImage &image, const QColor &color)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found += image.pixelColor(x, y) == color;
    }
    return found;
}

/// Whether that comes to be seen. Looks at other times of the beat than before, for taking a
/// picture may last as long as a beat.
template <class Look> bool happens(Look isSeen)
{
    const QDeadlineTimer end(patience);
    for (int pause = 0; !end.hasExpired(); pause = (pause + 130) % 500) {
        QTest::qWait(pause); // ms
        if (isSeen())
            return true;
    }
    return false;
}

} // namespace

/// Each step goes on from where the last one left the station.
class StationAlarmsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_rig.begin(); }
    void isCalm()
    {
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(schematic).isOpen, patience);
        QTRY_COMPARE_WITH_TIMEOUT(alarmsThatAre("active"), 0, patience);
        QTRY_COMPARE_WITH_TIMEOUT(count(shownBanner("calm"), pumpPriority), 0, patience);
        QVERIFY(!aroundPump("calm-pump").isNull());
    }
    void marksElementAndBanner()
    {
        QVERIFY(m_rig.plant().write("Sim.NetPump1Failure", 1.0));
        QTRY_VERIFY_WITH_TIMEOUT(alarmsThatAre("active") > 0, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.hasTitle(alarms), patience);
        const auto isLit = [this] { return count(seenPump(), pumpPriority) > 100; };
        QVERIFY(happens(isLit));
        QVERIFY(happens([&] { return !isLit(); })); // it blinks
        QVERIFY(happens([this] { return count(shownBanner("banner"), pumpPriority) > 200; }));
    }
    void leadsToTheSource()
    {
        m_rig.click(m_rig.project().centreOf(footer, "Страница: Тренды К1"));
        QTRY_VERIFY_WITH_TIMEOUT(isOnPage("Тренды К1"), patience);
        m_rig.click(bannerPlace().topLeft() + QPoint(120, 24));
        QVERIFY(happens([this] {
            return count(m_rig.grab(m_rig.window(schematic).place, "source"), jumpMark) > 100;
        }));
    }
    void acknowledgesWithinRights()
    {
        const int before = alarmsThatAre("unacknowledged");
        clickBannersButton(); // nobody is logged in
        logIn();
        QVERIFY(alarmsThatAre("unacknowledged") >= before);
    }
    void acknowledgesWithAComment()
    {
        if (!m_rig.hasTitle(alarms))
            m_rig.click(bannerPlace().topRight() + QPoint(-150, 24));
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.hasTitle(alarms), patience);
        const int height = m_rig.placeOf(alarms).height();
        const QRect headline = m_rig.placeOf(alarms).adjusted(8, 32, -8, -height + 80);
        QVector<QPoint> folds; // "Подробно", the hidden ones, the filter
        QTRY_COMPARE_WITH_TIMEOUT((folds = m_rig.buttonsIn(headline, 3)).size(), 3, patience);
        m_rig.click(folds[0]);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.placeOf(alarms).height() > height, patience);
        QVERIFY(happens([this] { return isAskedForComment(); }));
        QVERIFY(happens([this] { return isReadyForComment(); }));
        m_rig.grab({}, "comment");
        m_rig.type(comment, "Tab");
        m_rig.type("", "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.hasTitle(question), patience);
        QTRY_VERIFY_WITH_TIMEOUT(entryWith(comment).contains("Квитирование события"), patience);
        QVERIFY2(entryWith(comment).contains("\"operator\""), qPrintable(entryWith(comment)));
    }
    void acknowledgesTheRestByTheBanner()
    {
        QTRY_VERIFY_WITH_TIMEOUT(acknowledgedAll(), patience);
        m_rig.grab({}, "acknowledged");
    }
    void opensTheAlarmWindow()
    {
        m_rig.click(bannerPlace().topRight() + QPoint(-150, 24));
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.hasTitle(alarms), patience);
        QVERIFY(m_rig.closeAlarms());
    }
    void listsTheEvents()
    {
        m_rig.click(m_rig.project().centreOf(footer, "Страница: События"));
        QTRY_VERIFY_WITH_TIMEOUT(isOnPage("События"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(listHas("Отказ сетевого насоса 1"), patience);
        QVERIFY(listHas("Квитирование события"));
        m_rig.grab({}, "events");
    }
    void theJournalTellsWhoAcknowledged()
    {
        QVERIFY(m_rig.stopStation());
        const QString told = journal();
        QVERIFY(told.contains("Отказ сетевого насоса 1"));
        QVERIFY(told.contains("Квитирование события"));
        QVERIFY(told.contains("\"operator\""));
    }

private:
    /// Whether a row at the head of the event list has that.
    bool listHas(const QString &text) const
    {
        const QJsonArray windows = m_rig.status()["windows"].toArray();
        for (const QJsonValue &window : windows) {
            const QByteArray lists = QJsonDocument(window["lists"].toArray()).toJson();
            if (QString::fromUtf8(lists).contains(text))
                return true;
        }
        return false;
    }
    int alarmsThatAre(const char *state) const
    {
        return m_rig.status()["alarms"].toObject()[state].toInt(-1);
    }
    bool isOnPage(const QString &page) const
    {
        const QVector<ShownElement> tiles = m_rig.window(footer).elements;
        return std::any_of(tiles.begin(), tiles.end(), [&](const ShownElement &tile) {
            return tile.text.contains(QStringLiteral("▸ ") + page);
        });
    }
    QRect bannerPlace() const
    {
        return m_rig.project()
            .placeIn(header, banner)
            .translated(m_rig.window(header).place.topLeft());
    }
    QImage shownBanner(const QString &name) const { return m_rig.grab(bannerPlace(), name); }
    /// With the frame beside it.
    QRect aroundPumpPlace() const
    {
        return m_rig.project()
            .placeIn(overview, pump)
            .translated(m_rig.window(schematic).place.topLeft())
            .adjusted(-6, -6, 6, 6);
    }
    QImage aroundPump(const QString &name) const { return m_rig.grab(aroundPumpPlace(), name); }
    /// With no alarm window over it, which comes up for whatever follows from the fault.
    QImage seenPump() const { return m_rig.closeAlarms() ? aroundPump("pump") : QImage(); }
    void clickBannersButton() const { m_rig.click(bannerPlace().topRight() + QPoint(-60, 24)); }
    void logIn() const
    {
        m_rig.click(m_rig.project().centreOf(header, "Войти…"));
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.activeTitle(), login, patience);
        m_rig.type("1111", "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.hasTitle(login), patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(header).textOf("Пользователь"),
                                  QStringLiteral("Оператор смены"), patience);
    }
    /// Chooses the first alarm and presses the first button of its details, unless that is done.
    bool isAskedForComment() const
    {
        if (m_rig.hasTitle(question))
            return true;
        const QRect place = m_rig.placeOf(alarms);
        m_rig.click(place.topLeft() + QPoint(300, 148));
        m_rig.click(place.bottomLeft() + QPoint(60, -84));
        return QTest::qWaitFor([this] { return m_rig.hasTitle(question); });
    }
    /// Presses into the note, unless it has the keyboard.
    bool isReadyForComment() const
    {
        const auto isActive = [this] { return m_rig.activeTitle() == question; };
        if (isActive())
            return true;
        m_rig.click(m_rig.placeOf(question).center());
        return QTest::qWaitFor(isActive);
    }
    QString entryWith(const QString &text) const
    {
        return journal().split('\n').filter(text).value(0);
    }
    /// One more by the banner, as long as any waits.
    bool acknowledgedAll() const
    {
        if (m_rig.closeAlarms() && alarmsThatAre("unacknowledged") > 0)
            clickBannersButton();
        return alarmsThatAre("unacknowledged") == 0;
    }
    QString journal() const
    {
        return StationRig::printed(
            STATION_BINARY_DIR "/bin/records",
            {"journal", "export", m_rig.dataDirectory() + "/journal.sqlite"});
    }

    StationRig m_rig;
};

QTEST_GUILESS_MAIN(StationAlarmsTest)
#include "tst_station_alarms.moc"
