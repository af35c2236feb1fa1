// The station as an operator meets it: a real display, real clicks, a real protocol to a plant that
// goes away, comes back and answers nonsense.
#include "e2e/StationRig.h"
#include "support/Rows.h"

#include "nodes/journal/EventJournal.h"

#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>

using namespace EndToEnd;

namespace {

const QString header = QStringLiteral("Заголовок");
const QString footer = QStringLiteral("Навигация");
const QString schematic = QStringLiteral("Мнемосхема");
const QString alarms = QStringLiteral("Тревоги");
const QString control = QStringLiteral("Управление котлом 1");

double numberIn(const QString &text)
{
    bool isNumber = false;
    const double number = text.section(QLatin1Char(' '), 0, 0).toDouble(&isNumber);
    return isNumber ? number : qQNaN();
}

} // namespace

class StationPlantTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_rig.begin(); }
    void becomesLive()
    {
        QTRY_COMPARE_WITH_TIMEOUT(notGood(), QString(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.status()["state"].toString(), QStringLiteral("running"),
                                  patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.status()["firstFrameMs"].toInt() > 0, patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(header).ids(), m_rig.project().boundIn(header),
                                  patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(schematic).ids(),
                                  m_rig.project().boundIn("Котельная"), patience);
    }
    void showsWhatThePlantServes_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<double>("tolerance"); // what noise and one poll may change
        QTest::newRow("Net.Temp.Supply") << header << 0.5;
        QTest::newRow("Outside.Temp") << header << 0.5;
        QTest::newRow("Net.Pressure.Return") << schematic << 0.01;
        QTest::newRow("Net.Flow") << schematic << 5.0;
        QTest::newRow("Gas.Flow") << schematic << 40.0;
    }
    void showsWhatThePlantServes()
    {
        QFETCH(QString, window);
        QFETCH(double, tolerance);
        const char *signal = QTest::currentDataTag();
        const auto difference = [&] {
            const double shown = numberIn(m_rig.window(window).textOf(signal));
            return qAbs(shown - m_rig.plant().read(signal));
        };
        QTRY_VERIFY_WITH_TIMEOUT(difference() <= tolerance, patience);
    }
    void marksLossAndRecovers()
    {
        const QRect place = m_rig.project()
                                .placeIn(header, "Значение Net.Temp.Supply 3")
                                .translated(m_rig.window(header).place.topLeft());
        const QImage live = m_rig.grab(place, "live");
        QVERIFY(!live.isNull());

        QVERIFY(m_rig.stopPlant());
        QTRY_COMPARE_WITH_TIMEOUT(notLost(), QString(), patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.grab(place, "lost") != live, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.hasTitle(alarms), patience);
        m_rig.grab({}, "alarm");

        QVERIFY(m_rig.startPlant());
        QTRY_COMPARE_WITH_TIMEOUT(notGood(), QString(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(alarmsThatAre("active"), 0, patience);
        QVERIFY(m_rig.closeAlarms());
    }
    void navigatesByClick()
    {
        showPage("Котёл 1");
        QTRY_COMPARE_WITH_TIMEOUT(notGood(), QString(), patience);
        QCOMPARE(m_rig.window(footer).ids(), m_rig.project().boundIn(footer));
        const auto marked = [this](const QString &page) {
            const QVector<ShownElement> tiles = m_rig.window(footer).elements;
            return std::any_of(tiles.begin(), tiles.end(), [&](const ShownElement &tile) {
                return tile.text.contains(QStringLiteral("▸ ") + page);
            });
        };
        QTRY_VERIFY_WITH_TIMEOUT(marked("Котёл 1") && !marked("Котельная"), patience);
        showPage("Котельная");
    }
    void refusesWithoutLogin()
    {
        m_rig.click(m_rig.project().centreOf(footer, "Управление К1"));
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(control).ids(), m_rig.project().boundIn(control),
                                  patience);
        const double before = m_rig.plant().read("K1.Temp.Setpoint");
        enterSetPoint("90");
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.activeTitle(), QStringLiteral("Внимание"), patience);
        m_rig.grab({}, "refused");
        m_rig.type({}, "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.hasTitle("Внимание"), patience);
        QCOMPARE(m_rig.plant().read("K1.Temp.Setpoint"), before);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_rig.window(control).textOf("K1.Temp.Setpoint").startsWith("95.0"), patience);
    }
    void logsIn()
    {
        QCOMPARE(m_rig.window(header).textOf("Пользователь"), QStringLiteral("Вход не выполнен"));
        m_rig.click(m_rig.project().centreOf(header, "Войти…"));
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.activeTitle(), QStringLiteral("Авторизация"), patience);
        m_rig.grab({}, "login");
        m_rig.type("1112", "Return"); // wrong: the dialog stays
        QTest::qWait(1000);
        QVERIFY(m_rig.hasTitle("Авторизация"));
        m_rig.type({}, "ctrl+a");
        m_rig.type("1111", "Return");
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.hasTitle("Авторизация"), patience);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(header).textOf("Пользователь"),
                                  QStringLiteral("Оператор смены"), patience);
    }
    void acknowledgesTheLoss()
    {
        const int windows = m_rig.windowCount();
        m_rig.click(m_rig.project().centreOf(footer, "Меню ▴"));
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.windowCount() > windows, patience); // keys go to the menu
        for (int entry = 0; entry < 5; ++entry)
            m_rig.type({}, "Down");
        m_rig.type({}, "Return");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.hasTitle(alarms), patience);
        m_rig.grab({}, "returned");
        QTRY_COMPARE_WITH_TIMEOUT(alarmsThatAre("unacknowledged"), 1, patience);
        m_rig.clickInAlarms(60);
        QTRY_COMPARE_WITH_TIMEOUT(alarmsThatAre("unacknowledged"), 0, patience);
        QVERIFY(m_rig.closeAlarms());
    }
    void setPointTravels()
    {
        enterSetPoint("91.5");
        m_rig.grab({}, "typed");
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.plant().read("K1.Temp.Setpoint"), 91.5, patience);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_rig.window(control).textOf("K1.Temp.Setpoint").startsWith("91.5"), patience);
        m_rig.grab({}, "control");
    }
    void stopsTheBurnerByClick()
    {
        QCOMPARE(m_rig.plant().read("K1.Burner.Start"), 1.0);
        clickIn(control, control, "■ Горелка: стоп…");
        const QString question = QStringLiteral("Остановить: Котёл 1");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(question).isOpen, patience);
        m_rig.grab({}, "question");
        QCOMPARE(m_rig.plant().read("K1.Burner.Start"), 1.0);
        clickIn(question, "Подтверждение останова", "Остановить");
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.plant().read("K1.Burner.Start"), 0.0, patience);
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.window(question).isOpen, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(control).reads("K1.Burner.State", "ОСТАНОВЛЕН"),
                                 patience);
    }
    void startsAPumpByItsFaceplate()
    {
        const QString pump = QStringLiteral("Сетевой насос 2");
        const QPoint symbol = m_rig.project().centreOf("Котельная", "Символ Net.Pump2.Running") +
                              m_rig.window(schematic).place.topLeft();
        m_rig.click(symbol);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(pump).isOpen, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(pump).reads("Net.Pump2.Running", "СТОП"), patience);
        m_rig.grab({}, "faceplate");
        clickIn(pump, "Насос", "▶ Пуск…");
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window("Пустить: " + pump).isOpen, patience);
        clickIn("Пустить: " + pump, "Подтверждение пуска", "Пустить");
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.plant().read("Net.Pump2.Start"), 1.0, patience);
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.window(pump).reads("Net.Pump2.Running", "РАБОТА"), patience);
        closeByItsButton(pump);
    }
    void movesAndClosesAWindow()
    {
        const QRect before = m_rig.window(control).place;
        const QPoint title(before.center().x(), before.top() - 16);
        const QPoint shift(-160, 96);
        m_rig.drag(title, title + shift);
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(control).place.topLeft(), before.topLeft() + shift,
                                  patience);
        closeByItsButton(control);
    }
    void survivesAFaultyLine_data()
    {
        const Rows<double, QString> row("fault", "composition");
        row("late", 1.0, "Котёл 2");
        row("garbage", 2.0, "Котельная");
        row("truncate", 3.0, "Котёл 1");
        row("silent", 4.0, "Котёл 2");
    }
    void survivesAFaultyLine()
    {
        QFETCH(double, fault);
        QFETCH(QString, composition);
        m_rig.plant().write("Line.Fault", fault);
        QTRY_COMPARE_WITH_TIMEOUT(notLost(), QString(), patience);
        // The operator's hands are not tied meanwhile, and what opens is not taken for live either.
        showPage(composition);
        QTRY_COMPARE_WITH_TIMEOUT(notLost(), QString(), patience);
        const double uptime = m_rig.status()["uptime"].toDouble();
        QTRY_VERIFY_WITH_TIMEOUT(m_rig.status()["uptime"].toDouble() > uptime, patience);
        m_rig.plant().write("Line.Fault", 0.0);
        QTRY_COMPARE_WITH_TIMEOUT(notGood(), QString(), patience);
    }
    void endsOrderly()
    {
        QVERIFY(m_rig.stopStation());
        QCOMPARE(m_rig.status()["state"].toString(), QStringLiteral("stopped"));
    }
    void keptTheWriteInItsJournal()
    {
        Nodes::EventJournal journal;
        QVERIFY(journal.Open((m_rig.dataDirectory() + "/journal.sqlite").toStdString()));
        Nodes::JournalQuery query;
        query.text = "Запись значения";
        std::vector<Nodes::BasicEvent> events;
        QVERIFY(journal.Query(query, events));
        // The newest first.
        const auto stop = std::find_if(events.begin(), events.end(), [](const auto &event) {
            return QString::fromStdString(event.source).endsWith("/K1.Burner.Start");
        });
        QVERIFY(stop != events.end());
        QCOMPARE(stop->oldValue, std::string("true"));
        QCOMPARE(stop->newValue, std::string("false"));
        QCOMPARE(stop->user, std::string("operator"));
        query.text = "Нет связи с контроллером";
        QVERIFY(journal.Query(query, events));
        QVERIFY(std::any_of(events.begin(), events.end(), [](const auto &event) {
            return event.type == Nodes::TypeAcknowledgement && event.user == "operator";
        }));
        query.text = "Запись отклонена";
        QVERIFY(journal.Query(query, events));
        QCOMPARE(events.size(), std::size_t(1));
        QCOMPARE(events[0].newValue, std::string("90"));
        QVERIFY(journal.Verify());
    }

private:
    /// The first shown value that is not right; "" when all are.
    template <class Predicate> QString firstWrong(Predicate isRight) const
    {
        const QVector<ShownElement> shown = m_rig.shown();
        const auto wrong = std::find_if_not(shown.begin(), shown.end(), isRight);
        if (wrong != shown.end())
            return wrong->signal + " shows '" + wrong->text + "', " + wrong->quality;
        return shown.isEmpty() ? QStringLiteral("nothing is shown") : QString();
    }
    QString notGood() const
    {
        return firstWrong([](const ShownElement &element) { return element.quality == "good"; });
    }
    /// What comes from the plant is to be marked bad and to read as nothing; the rest is good.
    QString notLost() const
    {
        static const QRegularExpression content(QStringLiteral("\\w"),
                                                QRegularExpression::UseUnicodePropertiesOption);
        return firstWrong([this](const ShownElement &element) {
            if (!m_rig.project().isRemote(element.id))
                return element.quality == "good";
            // Symbols have a picture for what is not known.
            return element.quality == "bad" &&
                   (element.text.endsWith("-unknown.svg") || !element.text.contains(content));
        });
    }
    void showPage(const QString &composition)
    {
        m_rig.click(m_rig.project().centreOf(footer, QStringLiteral("Страница: ") + composition));
        QTRY_COMPARE_WITH_TIMEOUT(m_rig.window(schematic).ids(),
                                  m_rig.project().boundIn(composition), patience);
    }
    /// Clicks an element of the open window; `facts` names the node that describes it.
    void clickIn(const QString &window, const QString &facts, const QString &element)
    {
        const QRect place = m_rig.project().placeIn(facts, element);
        QVERIFY2(place.isValid(), qPrintable(facts + "/" + element));
        m_rig.click(m_rig.window(window).place.topLeft() + place.center());
    }
    void enterSetPoint(const QString &text)
    {
        const QRect box = m_rig.project().placeIn(control, "Уставка K1.Temp.Setpoint");
        m_rig.click(m_rig.window(control).place.topLeft() + box.topLeft() + QPoint(20, 16));
        m_rig.type({}, "ctrl+a");
        m_rig.type(text, "Return");
    }
    void closeByItsButton(const QString &window)
    {
        m_rig.click(m_rig.window(window).place.topRight() + QPoint(-16, -16));
        QTRY_VERIFY_WITH_TIMEOUT(!m_rig.window(window).isOpen, patience);
    }
    int alarmsThatAre(const char *state) const
    {
        return m_rig.status()["alarms"].toObject()[state].toInt(-1);
    }

    StationRig m_rig;
};

QTEST_GUILESS_MAIN(StationPlantTest)
#include "tst_station_plant.moc"
