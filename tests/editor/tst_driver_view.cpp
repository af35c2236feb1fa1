#include "editor/drivers/DriverSettings.h"
#include "editor/drivers/DriverView.h"
#include "editor/drivers/LocalTrial.h"
#include "editor/drivers/ModbusTrial.h"
#include "editor/drivers/PropertyForm.h"
#include "editor/project/ProjectSession.h"
#include "editor/tables/DocumentTable.h"
#include "editor/workspace/Workspace.h"

#include "nodes/drivers/ModbusTestServer.h"
#include "nodes/drivers/modbus/ModbusAddresses.h"
#include "nodes/drivers/modbus/modbusDriver.h"
#include "nodes/model/KindTable.h"
#include "nodes/model/NodesCollection.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;
using Nodes::ConfigNode;
using Properties = std::vector<std::pair<const char *, std::string>>;

namespace {

/// A new project with a device of three signals.
struct Plant
{
    Plant()
    {
        if (!session.create(directory.filePath("p"), "П"))
            qFatal("no project");
        device = add("modbusDriver", session.root()->GetNodeAt(0), "ПЛК", {{"timeout", "200"}});
        group = add("modbusGroup", device, "Г1", {{"start", "10"}, {"count", "4"}});
        add("modbusSignal", group, "Т01", {{"scale", "0.1"}});
        add("modbusSignal", group, "Т02", {{"offset", "1"}, {"dataType", "int32"}});
        add("modbusSignal", group, "Т03", {{"offset", "3"}});
    }
    ConfigNode *add(const char *key, ConfigNode *parent, const char *name,
                    const Properties &properties)
    {
        const Nodes::KindInfo *kind = Nodes::KindTable::Instance().FindByKey(key);
        ConfigNode *node = session.project()->CreateNode(kind->type, parent);
        node->SetName(name);
        for (const auto &[property, text] : properties) {
            if (!node->SetPropertyText(property, text))
                qFatal("%s", property);
        }
        return node;
    }

    QTemporaryDir directory;
    QWidget window;
    ProjectSession session;
    Workspace workspace{session, window};
    ConfigNode *device;
    ConfigNode *group;
};

} // namespace

class DriverViewTest : public QObject
{
    Q_OBJECT

private slots:
    void everyDriverHasAForm()
    {
        Plant p;
        for (const char *key : {"modbusDriver", "hostDriver", "simulatorDriver"}) {
            ConfigNode *driver = p.add(key, p.session.root()->GetNodeAt(0), key, {});
            const DocumentRow *row = FindDocument(*driver);
            QVERIFY(row);
            const std::unique_ptr<DocumentView> view(row->make(p.workspace, driver, nullptr));
            const auto *form = view->findChild<PropertyForm *>();
            QVERIFY(form);
            for (const auto &property : driver->GetKind()->properties) {
                const bool isColor = property.binding.type == Nodes::PropertyType::Color;
                QVERIFY2(isColor || form->field(property.key), property.key.c_str());
            }
        }
    }

    void formEditsAndFollows()
    {
        Plant p;
        PropertyForm form(p.workspace, p.device, nullptr);
        form.show();
        auto *port = qobject_cast<QLineEdit *>(form.field("port"));
        auto *timeout = qobject_cast<QLineEdit *>(form.field("timeout"));
        auto *enabled = qobject_cast<QCheckBox *>(form.field("enabled"));
        const auto enter = [](QLineEdit *line, const char *text) {
            line->setText(text);
            QTest::keyClick(line, Qt::Key_Return);
        };
        enter(port, "1502");
        QCOMPARE(p.session.undoStack().count(), 1);
        enabled->click();
        QCOMPARE(p.session.undoStack().count(), 2);
        const QSignalSpy told(&p.workspace, &Workspace::told);
        const QString before = timeout->text();
        enter(timeout, "5"); // 10 at least
        QCOMPARE(told.size(), 1);
        QCOMPARE(p.session.undoStack().count(), 2);
        QVERIFY(QTest::qWaitForWindowActive(&form));
        timeout->setFocus();
        const QColor ground = port->palette().color(QPalette::Base);
        QVERIFY(timeout->palette().color(QPalette::Base) != ground); // "5" is not the value
        QTest::keyClick(timeout, Qt::Key_Escape);
        QCOMPARE(timeout->text(), before);
        QCOMPARE(timeout->palette().color(QPalette::Base), ground);
        p.session.undoStack().undo();
        p.session.undoStack().undo();
        QCOMPARE(port->text(), QString("502"));
        QVERIFY(enabled->isChecked());
        p.session.setReadOnly("занят");
        QVERIFY(!form.isEnabled());
    }

    void driversOfThisMachineAreTriedOut()
    {
        Plant p;
        ConfigNode *folder = p.add("folder", p.session.root()->GetNodeAt(0), "Расчёты", {});
        ConfigNode *driver =
            p.add("simulatorDriver", folder, "Имитатор", {{"period", "10"}, {"enabled", "false"}});
        ConfigNode *sum =
            p.add("simulatorSignal", driver, "Сумма",
                  {{"formula", "signal(\"" + driver->GetPath() + "/Слагаемое\") + 0.25"},
                   {"decimals", "2"}});
        p.add("simulatorSignal", driver, "Слагаемое", {{"formula", "2"}});
        const std::unique_ptr<DocumentView> view(
            FindDocument(*driver)->make(p.workspace, driver, nullptr));
        auto *trial = view->findChild<LocalTrial *>();
        QVERIFY(trial);
        trial->start();
        const auto *table = trial->findChild<QTableWidget *>("values");
        QCOMPARE(table->rowCount(), 2);
        QTRY_COMPARE(table->item(0, 1)->text(), QString("2,25"));
        QVERIFY(sum->SetPropertyText("formula", "1 +")); // a change is tried at once
        QTRY_COMPARE(table->item(0, 3)->text(),
                     QString("✗ формула, строка 1: текст обрывается, здесь должно стоять ещё "
                             "что-то"));
        QCOMPARE(table->item(0, 1)->text(), QString("----"));
        QVERIFY(driver->GetState() != Nodes::NodeState::Running); // it is the copy that works
        QVERIFY(sum->SetPropertyText("formula", "7"));
        QTRY_COMPARE(table->item(0, 1)->text(), QString("7,00"));
        trial->stop();
        QCOMPARE(table->rowCount(), 0); // nothing that looks live is left
        trial->start();
        driver->GetParent()->RemoveNode(driver).reset();
        QTRY_VERIFY(!trial->isRunning());
    }

    void fieldsTellTheirRanges()
    {
        Plant p;
        const PropertyForm form(p.workspace, p.device, nullptr);
        QString texts;
        for (const auto *label : form.findChildren<QLabel *>())
            texts += label->text() + '\n';
        QVERIFY2(texts.contains("от 10 до 600000"), qPrintable(texts));
        QVERIFY(texts.contains("${имя}"));
    }

    void addressesAreLookedThrough_data()
    {
        QTest::addColumn<QString>("offset");
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("found"); // said of the fourth signal or its group
        QTest::addColumn<bool>("isInGroup");
        const auto row = [](const char *name, const char *offset, const char *type, int bit,
                            const char *found, bool isInGroup = true) {
            QTest::newRow(name) << QString(offset) << QString(type) << bit << QString(found)
                                << isInGroup;
        };
        row("the same register", "3", "uint16", 0, "занят");
        row("half of a wide one", "2", "uint16", 0, "Т02");
        row("outside", "4", "uint16", 0, "не помещается");
        row("a bit of a whole one", "3", "bit", 5, "занят");
        row("without a group", "0", "uint16", 0, "вне группы", false);
    }
    void addressesAreLookedThrough()
    {
        QFETCH(QString, offset);
        QFETCH(QString, type);
        QFETCH(int, bit);
        QFETCH(QString, found);
        Plant p;
        const auto &device = dynamic_cast<const Nodes::modbusDriver &>(*p.device);
        QVERIFY(Nodes::FindAddressTrouble(device).empty());
        const DriverSettings settings(p.workspace, p.device, nullptr);
        QCOMPARE(settings.findings().size(), 1); // that there are none
        QFETCH(bool, isInGroup);
        p.add("modbusSignal", isInGroup ? p.group : p.device, "Т04",
              {{"offset", offset.toStdString()},
               {"dataType", type.toStdString()},
               {"bit", std::to_string(bit)}});
        const Nodes::ValidationResults results = Nodes::FindAddressTrouble(device);
        QCOMPARE(results.size(), std::size_t(1));
        QVERIFY(QString::fromStdString(results[0].GetMessageStr()).contains(found));
        QTRY_VERIFY(!settings.findings().filter(found).isEmpty());
    }

    void bitsShareRegistersAndGapsAreTold()
    {
        Plant p;
        ConfigNode *bits =
            p.add("modbusGroup", p.device, "Биты", {{"start", "50"}, {"count", "3"}});
        p.add("modbusSignal", bits, "Б0", {{"offset", "1"}, {"dataType", "bit"}});
        p.add("modbusSignal", bits, "Б1", {{"offset", "1"}, {"dataType", "bit"}, {"bit", "1"}});
        const auto results =
            Nodes::FindAddressTrouble(dynamic_cast<const Nodes::modbusDriver &>(*p.device));
        QCOMPARE(results.size(), std::size_t(1));
        const auto text = QString::fromStdString(results[0].GetMessageStr());
        QVERIFY2(text.contains("точек: 2") && text.contains("адресу 50"), qPrintable(text));
    }

    void trialShowsWhatTheDeviceSays()
    {
        Plant p;
        ModbusTestServer server;
        server.words[10] = 215;
        server.words[11] = 1;
        server.refusedFrom = 13;
        DriverView view(p.workspace, p.device, nullptr);
        view.show();
        auto *trial = view.findChild<ModbusTrial *>();
        trial->findChild<QLineEdit *>("port")->setText(QString::number(server.port()));
        trial->findChild<QPushButton *>("start")->click();
        QVERIFY(trial->isRunning());
        auto *table = trial->findChild<QTableWidget *>("readings");
        QCOMPARE(table->rowCount(), 3);
        QTRY_COMPARE(table->item(0, 5)->text(), QString("21.5"));
        QCOMPARE(table->item(0, 3)->text(), QString("00D7"));
        QCOMPARE(table->item(0, 4)->text(), QString("215"));
        QCOMPARE(table->item(1, 5)->text(), QString("65536"));
        QCOMPARE(table->item(2, 5)->text(), QString("----"));
        QVERIFY(table->item(2, 7)->text().contains("адреса"));
        server.words[10] = 220; // and again after a second
        QTRY_COMPARE(table->item(0, 5)->text(), QString("22"));
        trial->stop();
        QVERIFY(!trial->isRunning());
        QCOMPARE(p.session.undoStack().count(), 0);
    }

    void trialTellsWhatItDoesNotRead()
    {
        Plant p;
        p.add("modbusSignal", p.device, "Ничей", {});
        ModbusTestServer server;
        server.refusedFrom = 13;
        DriverView view(p.workspace, p.device, nullptr);
        auto *trial = view.findChild<ModbusTrial *>();
        auto *status = trial->findChild<QLabel *>("status");
        auto *table = trial->findChild<QTableWidget *>("readings");
        trial->findChild<QLineEdit *>("port")->setText(QString::number(server.port()));
        trial->findChild<QCheckBox *>()->setChecked(false);
        trial->start();
        QCOMPARE(table->rowCount(), 4);
        QTRY_VERIFY(!trial->isRunning());
        QVERIFY2(status->text().contains("2 из 3"), qPrintable(status->text()));
        QVERIFY2(status->text().contains("1 — такого адреса"), qPrintable(status->text()));
        QVERIFY2(status->text().contains("Вне групп опроса: 1"), qPrintable(status->text()));
        QCOMPARE(table->item(3, 5)->text(), QString("----"));
        QVERIFY(table->item(3, 7)->text().contains("вне группы"));
        server.refusedFrom = 0xffff;
        trial->start();
        QTRY_VERIFY2(status->text().contains("3 из 3"), qPrintable(status->text()));
        QVERIFY(!status->text().startsWith("✓")); // not all of them are read
    }

    void trialOfAMuteDeviceIsNoConnection()
    {
        Plant p;
        ModbusTestServer mute;
        mute.fault = ModbusTestServer::Silent;
        DriverView view(p.workspace, p.device, nullptr);
        auto *trial = view.findChild<ModbusTrial *>();
        auto *status = trial->findChild<QLabel *>("status");
        trial->findChild<QLineEdit *>("port")->setText(QString::number(mute.port()));
        trial->findChild<QCheckBox *>()->setChecked(false);
        trial->start();
        QTRY_VERIFY(!trial->isRunning());
        QVERIFY2(status->text().contains("не отвечает"), qPrintable(status->text()));
    }

    void trialFollowsTheProject()
    {
        Plant p;
        DriverView view(p.workspace, p.device, nullptr);
        auto *trial = view.findChild<ModbusTrial *>();
        auto *host = trial->findChild<QLineEdit *>("host");
        host->setText("10.0.0.7"); // for the trial only
        PropertyForm form(p.workspace, p.device, nullptr);
        auto *port = qobject_cast<QLineEdit *>(form.field("port"));
        port->setText("1502");
        QTest::keyClick(port, Qt::Key_Return);
        QTRY_COMPARE(trial->findChild<QLineEdit *>("port")->text(), QString("1502"));
        QCOMPARE(host->text(), QString("10.0.0.7"));
    }

    void trialOfNobodyEndsAndSaysWhy()
    {
        Plant p;
        int port = 0;
        {
            ModbusTestServer server;
            port = server.port();
        }
        DriverView view(p.workspace, p.device, nullptr);
        auto *trial = view.findChild<ModbusTrial *>();
        auto *status = trial->findChild<QLabel *>("status");
        auto *line = trial->findChild<QLineEdit *>("port");
        line->setText("${plant.port}");
        trial->start();
        QVERIFY(!trial->isRunning());
        QVERIFY(status->text().contains("не число"));
        line->setText(QString::number(port));
        trial->findChild<QCheckBox *>()->setChecked(false);
        trial->start();
        QTRY_VERIFY(!trial->isRunning());
        QVERIFY2(status->text().contains("отказано"), qPrintable(status->text()));
    }
};

QTEST_MAIN(DriverViewTest)
#include "tst_driver_view.moc"
